#include "app/view/sun_ray.h"

#include "app/view/height_grid.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

/// Ground that rises by this much above the sun's ray hides it in full: the edge of a shadow is soft.
constexpr float kPenumbra = 0.04f;

/// Cells along the side of a tile, over which a ray that is high enough goes at once.
constexpr int kTile = 32;
constexpr int kMostSteps = 2 * kTile;

/// Steps from a place within a tile that stay in it.
int StepsWithin(float place, int tile, float step, float inverse)
{
    if (step == 0.0f)
        return kMostSteps;
    const auto border = static_cast<float>(step > 0.0f ? (tile + 1) * kTile : tile * kTile);
    return static_cast<int>(std::min((border - place) * inverse, static_cast<float>(kMostSteps)));
}

}  // namespace

SunRay::SunRay(const HeightGrid& grid, const Vector3& sun) : grid_(grid)
{
    const double cellsX = sun.x / static_cast<double>(grid.spacingX);
    const double cellsZ = sun.z / static_cast<double>(grid.spacingZ);
    const double most = std::max(std::fabs(cellsX), std::fabs(cellsZ));
    if (most == 0.0)
        return;
    stepX_ = static_cast<float>(cellsX / most);
    stepZ_ = static_cast<float>(cellsZ / most);
    const double ground = std::hypot(sun.x, sun.z) / most;
    stepGround_ = static_cast<float>(ground);
    rise_ = static_cast<float>(sun.y / most);
    inverseX_ = 1.0f / stepX_;
    inverseZ_ = 1.0f / stepZ_;
    FindSummits();
}

/// Between the cells of a tile lies ground up to the first ones of its neighbours.
void SunRay::FindSummits()
{
    highest_ = *std::max_element(grid_.heights.begin(), grid_.heights.end());
    tilesAcross_ = static_cast<std::size_t>((grid_.width + kTile - 1) / kTile);
    for (int top = 0; top < grid_.height; top += kTile) {
        for (int left = 0; left < grid_.width; left += kTile) {
            float summit = grid_.At(left, top);
            for (int z = top; z <= top + kTile; ++z) {
                for (int x = left; x <= left + kTile; ++x)
                    summit = std::max(summit, grid_.At(x, z));
            }
            summits_.push_back(summit);
        }
    }
}

float SunRay::Sunlight(int column, int row) const
{
    if (stepGround_ == 0.0f)
        return 1.0f;
    const auto east = static_cast<float>(grid_.width - 1);
    const auto south = static_cast<float>(grid_.height - 1);
    const float start = grid_.At(column, row);
    float clearance = kPenumbra;
    for (int step = 1;;) {
        auto count = static_cast<float>(step);
        float x = static_cast<float>(column) + count * stepX_;
        float z = static_cast<float>(row) + count * stepZ_;
        float ray = start + count * rise_;
        if (x < 0.0f || z < 0.0f || x > east || z > south || ray > highest_ + kPenumbra * count * stepGround_)
            break;
        const int tileX = static_cast<int>(x) / kTile;
        const int tileZ = static_cast<int>(z) / kTile;
        const int steps =
            std::max(std::min(StepsWithin(x, tileX, stepX_, inverseX_), StepsWithin(z, tileZ, stepZ_, inverseZ_)), 1);
        // The ray only rises: where the tile's summit doesn't come near enough, nothing in it does.
        const float reach = clearance > 0.0f ? count + static_cast<float>(steps - 1) : count;
        const float summit = summits_[static_cast<std::size_t>(tileX) + static_cast<std::size_t>(tileZ) * tilesAcross_];
        if (ray - summit > clearance * reach * stepGround_) {
            step += steps;
            continue;
        }
        for (const int end = step + steps; step < end; ++step) {
            count = static_cast<float>(step);
            x = static_cast<float>(column) + count * stepX_;
            z = static_cast<float>(row) + count * stepZ_;
            ray = start + count * rise_;
            if (x < 0.0f || z < 0.0f || x > east || z > south)
                break;
            clearance = std::min(clearance, (ray - grid_.Between(x, z)) / (count * stepGround_));
            if (clearance <= -kPenumbra)
                return 0.0f;
        }
    }
    return (clearance + kPenumbra) / (2.0f * kPenumbra);
}

}  // namespace tessara
