#pragma once

#include "app/output/polygon_text.h"

namespace tessara {

class Camera;
class TerrainSession;

/// Adapts a terrain to the camera, without OpenGL.
/// \param frames to adapt for; 0 goes on until the number of triangles stays the same
/// \return the triangles of the frame \throws std::runtime_error with one sentence for the user
PolygonText DumpFrame(const TerrainSession& terrain, Camera& camera, int frames);

}  // namespace tessara
