#include "app/viewer/terrain/height_brush.h"

#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tessara {

namespace {

/// Heights move by this share of the brush's radius in a second, at full strength in its middle.
constexpr double kRise = 0.35;

/// Share of the way to the level, or to the neighbours' mean, in a second.
constexpr double kApproach = 6.0;

/// 1 in the middle, 0 at the edge, smooth at both. \param distance in radii
double Falloff(double distance)
{
    if (distance >= 1.0)
        return 0.0;
    const double rest = 1.0 - distance * distance;
    return rest * rest;
}

double At(const ElevationData& data, int column, int row)
{
    const auto x = static_cast<std::size_t>(std::clamp(column, 0, data.width - 1));
    const auto y = static_cast<std::size_t>(std::clamp(row, 0, data.height - 1));
    return static_cast<double>(data.metres[x + y * static_cast<std::size_t>(data.width)]);
}

/// Mean of a cell and its neighbours, the nearer ones counting more.
double MeanAround(const ElevationData& data, int column, int row)
{
    constexpr int kReach = 2;
    constexpr double kWeights[] = {1.0, 4.0, 6.0, 4.0, 1.0};
    double sum = 0.0;
    for (int dy = -kReach; dy <= kReach; ++dy) {
        for (int dx = -kReach; dx <= kReach; ++dx)
            sum += kWeights[dx + kReach] * kWeights[dy + kReach] * At(data, column + dx, row + dy);
    }
    return sum / 256.0;
}

double Worked(const ElevationData& data, int column, int row, const BrushSettings& brush, const BrushPoint& point,
              double weight)
{
    const double height = At(data, column, row);
    const double rise = kRise * brush.radius * brush.strength * point.seconds * weight;
    const double share = 1.0 - std::exp(-kApproach * brush.strength * point.seconds * weight);
    switch (brush.kind) {
    case BrushKind::Raise:
        return height + rise;
    case BrushKind::Lower:
        return height - rise;
    case BrushKind::Smooth:
        return height + (MeanAround(data, column, row) - height) * std::min(4.0 * share, 1.0);
    case BrushKind::Flatten:
        return height + (point.level - height) * share;
    }
    return height;
}

}  // namespace

GridArea BrushArea(const ElevationData& data, const BrushPoint& point, double radius)
{
    const auto first = [](double place, double spacing, int count) {
        return static_cast<int>(std::clamp(std::ceil(place / spacing), 0.0, static_cast<double>(count)));
    };
    return {first(point.x - radius, data.spacingX, data.width), first(point.z - radius, data.spacingY, data.height),
            first(point.x + radius, data.spacingX, data.width), first(point.z + radius, data.spacingY, data.height)};
}

void Brush(ElevationData& data, const GridArea& area, const BrushSettings& brush, const BrushPoint& point, float floor)
{
    // Smoothing looks at the neighbours as they were.
    std::vector<float> heights;
    heights.reserve(static_cast<std::size_t>(std::max(area.right - area.left, 0)) *
                    static_cast<std::size_t>(std::max(area.bottom - area.top, 0)));
    for (int row = area.top; row < area.bottom; ++row) {
        for (int column = area.left; column < area.right; ++column) {
            const double away = std::hypot(column * data.spacingX - point.x, row * data.spacingY - point.z);
            const double weight = Falloff(away / brush.radius);
            const auto before = static_cast<float>(At(data, column, row));
            const auto after = static_cast<float>(Worked(data, column, row, brush, point, weight));
            heights.push_back(weight == 0.0 ? before : std::max(after, std::min(before, floor)));
        }
    }
    auto source = heights.begin();
    const auto columns = static_cast<std::ptrdiff_t>(area.right - area.left);
    for (int row = area.top; row < area.bottom; ++row, source += columns)
        std::copy(source, source + columns,
                  data.metres.begin() + area.left + static_cast<std::ptrdiff_t>(row) * data.width);
}

}  // namespace tessara
