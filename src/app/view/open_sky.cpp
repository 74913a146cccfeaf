#include "app/view/open_sky.h"

#include "app/view/height_grid.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr int kRun = PaddedRows::kRun;
constexpr int kDirections[8][2] = {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
constexpr int kDistances[] = {1, 2, 4, 7, 12, 20, 34};

}  // namespace

void OpenSky::Row(int row, std::span<float> skylight) const
{
    for (int column = 0; column < grid_.width; column += kRun) {
        float open[kRun] = {};
        Run(column, row, open);
        const int count = std::min(kRun, grid_.width - column);
        std::copy(open, open + count, skylight.begin() + column);
    }
}

void OpenSky::Run(int column, int row, float (&skylight)[kRun]) const
{
    const float* start = rows_.At(column, row);
    for (const auto& direction : kDirections) {
        const float cell = std::hypot(static_cast<float>(direction[0]) * grid_.spacingX,
                                      static_cast<float>(direction[1]) * grid_.spacingZ);
        float slope[kRun] = {};
        for (const int distance : kDistances) {
            // A run that lies beyond the grid as a whole sees what lies at its edge.
            const int from = std::clamp(column + direction[0] * distance, -kRun, grid_.width);
            const int other = std::clamp(row + direction[1] * distance, 0, grid_.height - 1);
            const float* heights = rows_.At(from, other);
            const float perLength = 1.0f / (cell * static_cast<float>(distance));
            for (int i = 0; i < kRun; ++i) {
                const float rise = (heights[i] - start[i]) * perLength;
                slope[i] = rise > slope[i] ? rise : slope[i];
            }
        }
        for (int i = 0; i < kRun; ++i)
            skylight[i] += 0.125f * (1.0f - slope[i] / std::sqrt(1.0f + slope[i] * slope[i]));
    }
}

}  // namespace tessara
