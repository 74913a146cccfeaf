#include "app/view/sun_rays.h"

#include "app/view/height_grid.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr int kRun = PaddedRows::kRun;

/// Ground that rises by this much above the sun's ray hides it in full: the edge of a shadow is soft.
constexpr float kPenumbra = 0.04f;

/// Cells along the side of a tile, over which rays that are high enough go at once.
constexpr int kTile = 32;
constexpr int kMostSteps = 2 * kTile;

/// Steps through a tile after which it is looked at again whether the rays are high enough.
constexpr int kSteps = 8;

/// Beyond the grid there is nothing that could hide the sun.
constexpr float kNoGround = -1e30f;

int TileOf(float place)
{
    return static_cast<int>(std::floor(place / kTile));
}

/// Steps from a place within a tile that stay in it.
int StepsWithin(float place, int tile, float step)
{
    if (step == 0.0f)
        return kMostSteps;
    const auto border = static_cast<float>(step > 0.0f ? (tile + 1) * kTile : tile * kTile);
    return static_cast<int>(std::min((border - place) / step, static_cast<float>(kMostSteps)));
}

}  // namespace

SunRays::SunRays(const HeightGrid& grid, const Vector3& sun) : grid_(grid), rows_(grid, kNoGround)
{
    const double cellsX = sun.x / static_cast<double>(grid.spacingX);
    const double cellsZ = sun.z / static_cast<double>(grid.spacingZ);
    const double most = std::max(std::fabs(cellsX), std::fabs(cellsZ));
    if (most == 0.0)
        return;
    stepX_ = static_cast<float>(cellsX / most);
    stepZ_ = static_cast<float>(cellsZ / most);
    stepGround_ = static_cast<float>(std::hypot(sun.x, sun.z) / most);
    rise_ = static_cast<float>(sun.y / most);
    FindSummits();
}

/// Between the cells of a tile lies ground up to the first ones of its neighbours.
void SunRays::FindSummits()
{
    highest_ = *std::max_element(grid_.heights.begin(), grid_.heights.end());
    tilesAcross_ = (grid_.width + kTile - 1) / kTile;
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

float SunRays::Summit(int tileX, int tileZ) const
{
    return tileX < 0 || tileX >= tilesAcross_ ? kNoGround
                                              : summits_[static_cast<std::size_t>(tileX + tileZ * tilesAcross_)];
}

void SunRays::Row(int row, std::span<float> sunlight) const
{
    if (stepGround_ == 0.0f) {
        std::fill(sunlight.begin(), sunlight.end(), 1.0f);
        return;
    }
    for (int column = 0; column < grid_.width; column += kRun) {
        Beam beam{column, row, 0.0f, {}, {}};
        for (int i = 0; i < kRun; ++i) {
            beam.start[i] = grid_.At(column + i, row);
            beam.clearance[i] = kPenumbra;
        }
        beam.lowest = *std::min_element(beam.start, beam.start + kRun);
        Follow(beam);
        const int count = std::min(kRun, grid_.width - column);
        for (int i = 0; i < count; ++i)
            sunlight[static_cast<std::size_t>(column + i)] =
                (std::max(beam.clearance[i], -kPenumbra) + kPenumbra) / (2.0f * kPenumbra);
    }
}

/// Whether no ray can meet ground any more.
bool SunRays::Leaves(const Beam& beam, float count) const
{
    const float left = static_cast<float>(beam.column) + count * stepX_;
    const float z = static_cast<float>(beam.row) + count * stepZ_;
    return z < 0.0f || z > static_cast<float>(grid_.height - 1) || left < static_cast<float>(-kRun) ||
           left > static_cast<float>(grid_.width - 1) ||
           beam.lowest + count * rise_ > highest_ + kPenumbra * count * stepGround_;
}

void SunRays::Follow(Beam& beam) const
{
    for (int step = 1;;) {
        const auto count = static_cast<float>(step);
        const float most = *std::max_element(beam.clearance, beam.clearance + kRun);
        if (most <= -kPenumbra || Leaves(beam, count))
            return;
        const float left = static_cast<float>(beam.column) + count * stepX_;
        const float z = static_cast<float>(beam.row) + count * stepZ_;
        const int tileX = TileOf(left);
        const int tileZ = TileOf(z);
        const int steps = std::max(std::min(StepsWithin(left, tileX, stepX_), StepsWithin(z, tileZ, stepZ_)), 1);
        // The rays only rise: where the tiles' summits don't come near enough to the lowest, nothing in them does.
        const float reach = most > 0.0f ? count + static_cast<float>(steps - 1) : count;
        const float summit = std::max(Summit(tileX, tileZ), Summit(tileX + 1, tileZ));
        if (beam.lowest + count * rise_ - summit > most * reach * stepGround_) {
            step += steps;
            continue;
        }
        for (const int end = step + std::min(steps, kSteps); step < end; ++step) {
            if (Leaves(beam, static_cast<float>(step)))
                return;
            Step(beam, step);
        }
    }
}

void SunRays::Step(Beam& beam, int step) const
{
    const auto count = static_cast<float>(step);
    const float across = count * stepX_;
    const float z = static_cast<float>(beam.row) + count * stepZ_;
    const auto column = static_cast<int>(std::floor(across));
    const auto row = static_cast<int>(z);
    const float tx = across - static_cast<float>(column);
    const float tz = z - static_cast<float>(row);
    const float* north = rows_.At(beam.column + column, row);
    const float* south = rows_.At(beam.column + column, row + 1);
    const float northWest = (1.0f - tx) * (1.0f - tz);
    const float northEast = tx * (1.0f - tz);
    const float southWest = (1.0f - tx) * tz;
    const float southEast = tx * tz;
    const float rise = count * rise_;
    const float perLength = 1.0f / (count * stepGround_);
    // Plain loops over arrays of their own, which compilers turn into vector instructions.
    float above[kRun];
    for (int i = 0; i < kRun; ++i)
        above[i] =
            (north[i] * northWest + north[i + 1] * northEast) + (south[i] * southWest + south[i + 1] * southEast);
    for (int i = 0; i < kRun; ++i)
        above[i] = (beam.start[i] + rise - above[i]) * perLength;
    for (int i = 0; i < kRun; ++i)
        beam.clearance[i] = above[i] < beam.clearance[i] ? above[i] : beam.clearance[i];
}

}  // namespace tessara
