#pragma once

#include <cstdint>
#include <string>

namespace tessara {

class Camera;
class TerrainSession;

/// Adapts a terrain to the camera, without OpenGL, and writes the triangles of the frame to a text file: one vertex a
/// line, three lines a triangle, x, y and z in tree units with the normalised height in y.
/// \param frames to adapt for; 0 goes on until the number of triangles stays the same
/// \return the number of triangles \throws std::runtime_error with one sentence for the user
std::uint64_t DumpFrame(const TerrainSession& terrain, Camera& camera, int frames, const std::string& path);

}  // namespace tessara
