#include "samples/country/height_field.h"

#include <algorithm>
#include <array>

namespace tessara {
namespace {

/// Weights of four values in a row for a place t of the way from the second to the third (Catmull and Rom).
std::array<double, 4> CubicWeights(double t)
{
    return {0.5 * t * (t * (2.0 - t) - 1.0), 0.5 * (t * t * (3.0 * t - 5.0) + 2.0),
            0.5 * t * (t * (4.0 - 3.0 * t) + 1.0), 0.5 * t * t * (t - 1.0)};
}

}  // namespace

double HeightField::Sample(double x, double y) const
{
    const double column = std::clamp((x - first) / step, 0.0, size - 1.0);
    const double row = std::clamp((y - first) / step, 0.0, size - 1.0);
    const int left = std::min(static_cast<int>(column), size - 2);
    const int top = std::min(static_cast<int>(row), size - 2);
    const std::array<double, 4> across = CubicWeights(column - left);
    const std::array<double, 4> down = CubicWeights(row - top);
    const auto inside = [this](int index) { return std::clamp(index, 0, size - 1); };
    double sum = 0.0;
    for (int j = 0; j < 4; ++j) {
        double line = 0.0;
        for (int i = 0; i < 4; ++i) {
            const float height = heights[Index(inside(left + i - 1), inside(top + j - 1))];
            line += across[static_cast<std::size_t>(i)] * static_cast<double>(height);
        }
        sum += down[static_cast<std::size_t>(j)] * line;
    }
    return sum;
}

}  // namespace tessara
