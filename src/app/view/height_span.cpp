#include "app/view/height_span.h"

#include "host/elevation/elevation_data.h"

#include <algorithm>

namespace tessara {

namespace {

HeightSpan Span(const ElevationData& data, float lowest, float highest)
{
    const double across = std::max(data.width * data.spacingX, data.height * data.spacingY);
    const double low = static_cast<double>(lowest);
    const double relief = static_cast<double>(highest) - low;
    // A palette's entries are spread from the floor to the top: most of them are for the ground that is there.
    const double room = 0.015 * across;
    const double floor = relief > 0.0 ? low - std::clamp(room, 0.1 * relief, 0.4 * relief) : low - room;
    const double top = relief > 0.0 ? static_cast<double>(highest) : low + 0.05 * across;
    return {lowest, highest, static_cast<float>(floor), static_cast<float>(top)};
}

}  // namespace

HeightSpan SpanOf(const ElevationData& data)
{
    return Span(data, data.minimum, data.maximum);
}

HeightSpan MeasureSpan(const ElevationData& data)
{
    const auto [lowest, highest] = std::minmax_element(data.metres.begin(), data.metres.end());
    return Span(data, *lowest, *highest);
}

}  // namespace tessara
