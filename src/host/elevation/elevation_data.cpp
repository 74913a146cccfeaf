#include "host/elevation/elevation_data.h"

#include <algorithm>

namespace tessara {

void ScanHeights(ElevationData& data)
{
    const auto [lowest, highest] = std::minmax_element(data.metres.begin(), data.metres.end());
    data.minimum = *lowest;
    data.maximum = *highest;
}

}  // namespace tessara
