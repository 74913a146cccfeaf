#pragma once

#include "app/view/aim.h"

#include <string>
#include <vector>

namespace tessara {

struct ElevationData;

/// A view of a terrain, by its kind.
struct PathPoint {
    std::string kind;
    Aim aim;
};

/// Views of every kind that a terrain is looked at in: all of it from all sides and from above, from close over its
/// highest point, and on flights across.
std::vector<PathPoint> CameraPath(const ElevationData& data);

}  // namespace tessara
