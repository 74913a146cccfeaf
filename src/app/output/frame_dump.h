#pragma once

#include "app/output/polygon_text.h"

namespace tessara {

class Camera;
class TerrainSession;

/// What of a frame is wanted.
enum class FrameExtent {
    Seen,   ///< what the camera sees
    Whole,  ///< all of the terrain, in the detail that it has for the camera
};

/// Adapts a terrain to the camera, without OpenGL.
/// \param frames to adapt for; 0 goes on until the number of triangles stays the same
/// \return the triangles of the frame \throws std::runtime_error with one sentence for the user
PolygonText DumpFrame(TerrainSession& terrain, const Camera& camera, int frames, FrameExtent extent);

}  // namespace tessara
