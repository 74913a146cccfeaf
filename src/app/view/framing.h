#pragma once

#include "host/vector3.h"

#include <vector>

namespace tessara {

class Camera;
class GroundFrame;
struct ElevationData;
struct HeightSpan;

/// What bounds a terrain in true space.
struct Outline {
    /// What a picture of the whole terrain must show: a selection of its surface, and the corners of its base.
    std::vector<Vector3> points;

    Vector3 middle;     ///< what a camera looks at by default
    double size = 0.0;  ///< the terrain's longest extent
};

/// \param data its range plays no part
Outline OutlineOf(const ElevationData& data, const HeightSpan& span, const GroundFrame& ground);

/// The longest extent of a terrain in true space, positive, from its lowest to its highest point upright.
double SizeOf(const HeightSpan& span, const GroundFrame& ground);

/// Height in true space of the base on which a terrain stands: a little below the deepest ground that can be dug.
double BaseOf(const HeightSpan& span, const GroundFrame& ground);

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
