#include "app/view/light_map.h"

#include "app/view/height_grid.h"
#include "app/view/open_sky.h"
#include "app/view/sun_rays.h"
#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

namespace tessara {

namespace {

constexpr double kSunlightShare = 0.6;  // of the time

/// How the grid of a light map lies over the terrain's.
struct Reduction {
    int step;  // cells of the terrain, along each axis, that a point stands for
    int width;
    int height;
    float spacingX;
    float spacingZ;
};

Reduction ReductionTo(const ElevationData& data, int maximumSide)
{
    const int step = (std::max(data.width, data.height) + maximumSide - 1) / maximumSide;
    const auto spread = [](double spacing, int from, int to) {
        return static_cast<float>(to > 1 ? spacing * (from - 1) / (to - 1) : spacing);
    };
    const int width = (data.width + step - 1) / step;
    const int height = (data.height + step - 1) / step;
    return {step, width, height, spread(data.spacingX, data.width, width), spread(data.spacingY, data.height, height)};
}

/// The cell in the middle of those that a point of the light map stands for.
int SourceCell(int point, int points, int cells)
{
    return points > 1 ? static_cast<int>(static_cast<std::int64_t>(point) * (cells - 1) / (points - 1)) : 0;
}

float ReducedHeight(const ElevationData& data, const Reduction& grid, double exaggeration, int x, int z)
{
    const int left = SourceCell(x, grid.width, data.width) - grid.step / 2;
    const int top = SourceCell(z, grid.height, data.height) - grid.step / 2;
    double sum = 0.0;
    for (int dz = 0; dz < grid.step; ++dz) {
        const auto row = static_cast<std::size_t>(std::clamp(top + dz, 0, data.height - 1));
        for (int dx = 0; dx < grid.step; ++dx) {
            const auto column = static_cast<std::size_t>(std::clamp(left + dx, 0, data.width - 1));
            sum += static_cast<double>(data.metres[column + row * static_cast<std::size_t>(data.width)]);
        }
    }
    return static_cast<float>(sum / (grid.step * grid.step) * exaggeration);
}

HeightGrid Reduce(const ElevationData& data, const Reduction& reduction, double exaggeration)
{
    HeightGrid grid{reduction.width, reduction.height, reduction.spacingX, reduction.spacingZ, {}};
    grid.heights.reserve(static_cast<std::size_t>(grid.width) * static_cast<std::size_t>(grid.height));
    for (int z = 0; z < grid.height; ++z) {
        for (int x = 0; x < grid.width; ++x)
            grid.heights.push_back(ReducedHeight(data, reduction, exaggeration, x, z));
    }
    return grid;
}

std::uint16_t Pack(float value)
{
    return static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 65535.0f));
}

/// Sets the normal of a point. \param heights gives the height of a point of the grid
template <class Heights>
void SetNormal(LightMap::Texel& texel, const Reduction& grid, int x, int z, const Heights& heights)
{
    const int west = std::max(x - 1, 0);
    const int east = std::min(x + 1, grid.width - 1);
    const int north = std::max(z - 1, 0);
    const int south = std::min(z + 1, grid.height - 1);
    const float runX = static_cast<float>(std::max(east - west, 1)) * grid.spacingX;
    const float runZ = static_cast<float>(std::max(south - north, 1)) * grid.spacingZ;
    const float slopeX = (heights(east, z) - heights(west, z)) / runX;
    const float slopeZ = (heights(x, south) - heights(x, north)) / runZ;
    const float length = std::sqrt(slopeX * slopeX + slopeZ * slopeZ + 1.0f);
    texel.normalX = Pack(0.5f - 0.5f * slopeX / length);
    texel.normalZ = Pack(0.5f - 0.5f * slopeZ / length);
}

void Report(const ProgressCallback& progress, double fraction)
{
    if (progress)
        progress(fraction);
}

/// Sunlight of all points, with the steps of shadows' edges from cell to cell smoothed.
std::vector<float> SunlightOf(const HeightGrid& grid, const Vector3& sun, const ProgressCallback& progress)
{
    HeightGrid light = grid;
    const SunRays rays(grid, sun);
    for (int z = 0; z < grid.height; ++z) {
        Report(progress, kSunlightShare * z / grid.height);
        rays.Row(z, std::span(light.heights).subspan(grid.Index(0, z), static_cast<std::size_t>(grid.width)));
    }
    std::vector<float> smooth;
    smooth.reserve(grid.heights.size());
    for (int z = 0; z < grid.height; ++z) {
        for (int x = 0; x < grid.width; ++x)
            smooth.push_back(0.25f * light.At(x, z) +
                             0.125f *
                                 (light.At(x - 1, z) + light.At(x + 1, z) + light.At(x, z - 1) + light.At(x, z + 1)) +
                             0.0625f * (light.At(x - 1, z - 1) + light.At(x + 1, z - 1) + light.At(x - 1, z + 1) +
                                        light.At(x + 1, z + 1)));
    }
    return smooth;
}

}  // namespace

LightMap MakeLightMap(const ElevationData& data, double exaggeration, const Vector3& sun, int maximumSide,
                      const ProgressCallback& progress)
{
    const Reduction reduction = ReductionTo(data, maximumSide);
    const HeightGrid grid = Reduce(data, reduction, exaggeration);
    const std::vector<float> sunlight = SunlightOf(grid, sun, progress);
    LightMap map{grid.width, grid.height, {}};
    map.texels.resize(grid.heights.size());
    const OpenSky sky(grid);
    std::vector<float> skylight(static_cast<std::size_t>(grid.width));
    for (int z = 0; z < grid.height; ++z) {
        Report(progress, kSunlightShare + (1.0 - kSunlightShare) * z / grid.height);
        sky.Row(z, skylight);
        for (int x = 0; x < grid.width; ++x) {
            LightMap::Texel& texel = map.texels[grid.Index(x, z)];
            SetNormal(texel, reduction, x, z, [&](int column, int row) { return grid.At(column, row); });
            texel.sunlight = Pack(sunlight[grid.Index(x, z)]);
            texel.skylight = Pack(skylight[static_cast<std::size_t>(x)]);
        }
    }
    Report(progress, 1.0);
    return map;
}

GridArea RenewNormals(LightMap& map, const ElevationData& data, double exaggeration, const GridArea& cells)
{
    const Reduction reduction = ReductionTo(data, std::max(map.width, map.height));
    const auto first = [&](int cell) { return std::max(cell / reduction.step - 2, 0); };
    const auto end = [&](int cell, int points) { return std::min(cell / reduction.step + 3, points); };
    const GridArea area{first(cells.left), first(cells.top), end(cells.right, map.width),
                        end(cells.bottom, map.height)};
    const auto heights = [&](int x, int z) { return ReducedHeight(data, reduction, exaggeration, x, z); };
    for (int z = area.top; z < area.bottom; ++z) {
        for (int x = area.left; x < area.right; ++x) {
            const auto index =
                static_cast<std::size_t>(x) + static_cast<std::size_t>(z) * static_cast<std::size_t>(map.width);
            SetNormal(map.texels[index], reduction, x, z, heights);
        }
    }
    return area;
}

}  // namespace tessara
