#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tessara {

/// Heights in metres as they are drawn, on a grid that may be coarser than the terrain's.
struct HeightGrid {
    int width;
    int height;
    float spacingX;
    float spacingZ;
    std::vector<float> heights;

    std::size_t Index(int x, int z) const
    {
        return static_cast<std::size_t>(x) + static_cast<std::size_t>(z) * static_cast<std::size_t>(width);
    }

    float At(int x, int z) const { return heights[Index(std::clamp(x, 0, width - 1), std::clamp(z, 0, height - 1))]; }

    /// Interpolated; the position lies in the grid.
    float Between(float x, float z) const
    {
        const int column = static_cast<int>(x);
        const int row = static_cast<int>(z);
        const float tx = x - static_cast<float>(column);
        const float tz = z - static_cast<float>(row);
        const float north = At(column, row) * (1.0f - tx) + At(column + 1, row) * tx;
        const float south = At(column, row + 1) * (1.0f - tx) + At(column + 1, row + 1) * tx;
        return north * (1.0f - tz) + south * tz;
    }
};

}  // namespace tessara
