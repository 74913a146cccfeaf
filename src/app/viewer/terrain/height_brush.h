#pragma once

#include "app/view/light_map.h"

namespace tessara {

struct ElevationData;

enum class BrushKind { Raise, Lower, Smooth, Flatten };

struct BrushSettings {
    BrushKind kind = BrushKind::Raise;
    double radius = 400.0;  ///< metres
    double strength = 0.5;  ///< 0 to 1
};

/// What a stroke of the brush works at.
struct BrushPoint {
    double x = 0.0;        ///< metres east of the north-west grid point
    double z = 0.0;        ///< metres south of it
    double level = 0.0;    ///< height in metres that Flatten goes towards
    double seconds = 0.0;  ///< how long the brush has worked here
};

/// Cells that a brush of that radius touches, within the grid.
GridArea BrushArea(const ElevationData& data, const BrushPoint& point, double radius);

/// Lets the brush work on the heights of an area. \param floor no height gets below this, in metres, unless it was
/// below
void Brush(ElevationData& data, const GridArea& area, const BrushSettings& brush, const BrushPoint& point, float floor);

}  // namespace tessara
