#pragma once

namespace tessara {

struct ElevationData;

/// Cells that a terrain that is drawn has around its grid: enough for what the surface draws at the corner to lie
/// outside, where it is cut off.
inline constexpr int kDrawnBorder = 2;

/// Heights of a terrain that is drawn, in metres. The component's elevations run from the floor to the top, so that a
/// person can dig a little below the lowest point and a flat terrain has an extent.
struct HeightSpan {
    float lowest = 0.0f;
    float highest = 0.0f;
    float floor = 0.0f;
    float top = 0.0f;
};

/// \param data its range is exact
HeightSpan SpanOf(const ElevationData& data);

/// The same by the heights themselves, whatever range the data states.
HeightSpan MeasureSpan(const ElevationData& data);

}  // namespace tessara
