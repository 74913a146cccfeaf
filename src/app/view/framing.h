#pragma once

#include "host/vector3.h"

#include <vector>

namespace tessara {

class Camera;
class GroundFrame;
struct ElevationData;

/// The points of true space that a picture of the whole terrain must show: a selection of its surface, and the corners
/// of its base.
std::vector<Vector3> OutlineOf(const ElevationData& data, const GroundFrame& ground);

/// Moves the camera, without turning it, to the place nearest to the points from which it sees all of them.
/// \param points at least one \param margin share of the picture's width and height that stays free at each edge
void FramePoints(Camera& camera, const std::vector<Vector3>& points, double margin);

/// Distances along the camera's view of the nearest and the farthest of the points.
struct DepthRange {
    double nearest;
    double farthest;
};
DepthRange DepthOf(const Camera& camera, const std::vector<Vector3>& points);

}  // namespace tessara
