#include "host/elevation/elevation_fill.h"

#include "host/elevation/hole_surface.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {
namespace {

void FillLowest(ElevationData& data)
{
    float lowest = std::numeric_limits<float>::max();
    for (const float height : data.metres)
        if (!std::isnan(height))
            lowest = std::min(lowest, height);
    std::replace_if(
        data.metres.begin(), data.metres.end(), [](float height) { return std::isnan(height); }, lowest);
}

}  // namespace

bool FillMissing(ElevationData& data, ElevationFill fill)
{
    const auto missing =
        std::count_if(data.metres.begin(), data.metres.end(), [](float height) { return std::isnan(height); });
    data.missing = static_cast<std::size_t>(missing);
    if (data.missing == data.metres.size())
        return false;
    data.holes.clear();
    if (data.missing > 0) {
        data.holes.resize(data.metres.size());
        std::transform(data.metres.begin(), data.metres.end(), data.holes.begin(),
                       [](float height) { return static_cast<std::uint8_t>(std::isnan(height) ? 1 : 0); });
        if (fill == ElevationFill::Lowest)
            FillLowest(data);
        else
            FillHolesSmoothly(data.metres, data.width, data.height);
    }
    ScanHeights(data);
    return true;
}

}  // namespace tessara
