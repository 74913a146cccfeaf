#pragma once

#include "host/detail_camera.h"

namespace tessara {

/// What the ground in a picture says about distances from the eye.
struct GroundReach {
    double nearest = 0.0;  ///< distance to the nearest ground, in true space; never above the true one

    /// The greatest that a surface's distance to a visible point is, in cells along the longer of x and z, for each
    /// unit of true space between the eye and the point; never below the true one. Positive.
    double cellsPerUnit = 0.0;
};

/// Looks at all ground that the camera sees, as far as it matters, hidden or not. Where it sees none, at all ground.
GroundReach SearchGround(const Camera& camera, const TerrainFrustum& frustum, const DrawnGround& ground,
                         const Vector3& drawUnits);

}  // namespace tessara
