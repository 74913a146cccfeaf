#pragma once

#include "host/elevation/elevation_data.h"

#include <algorithm>

namespace tessara {

/// Elevation data with the height that `metres(column, row)` gives at each place.
template <class Function>
ElevationData MakeElevation(int width, int height, double spacingX, double spacingY, Function metres)
{
    ElevationData data;
    data.width = data.sourceWidth = width;
    data.height = data.sourceHeight = height;
    data.spacingX = spacingX;
    data.spacingY = spacingY;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            data.metres.push_back(static_cast<float>(metres(x, y)));
    }
    const auto [low, high] = std::minmax_element(data.metres.begin(), data.metres.end());
    data.minimum = *low;
    data.maximum = *high;
    return data;
}

}  // namespace tessara
