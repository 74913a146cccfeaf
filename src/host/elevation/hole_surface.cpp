#include "host/elevation/hole_surface.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace tessara {
namespace {

/// A grid with the lists of its holes. Sizes are kept as the index arithmetic needs them.
struct Level {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<float> values;
    std::vector<std::uint32_t> even;   // holes with four neighbours, on the white squares of a chessboard
    std::vector<std::uint32_t> odd;    // and on the black ones
    std::vector<std::uint32_t> outer;  // holes at the edge of the grid

    bool HasHoles() const { return !even.empty() || !odd.empty() || !outer.empty(); }

    template <class Visit>
    void VisitHoles(Visit visit) const
    {
        for (const auto* holes : {&even, &odd, &outer})
            std::for_each(holes->begin(), holes->end(), visit);
    }

    void FindHoles()
    {
        std::uint32_t cell = 0;
        for (std::uint32_t y = 0; y < height; ++y) {
            for (std::uint32_t x = 0; x < width; ++x, ++cell) {
                if (!std::isnan(values[cell]))
                    continue;
                const bool isInner = x > 0 && y > 0 && x + 1 < width && y + 1 < height;
                (!isInner ? outer : (x + y) % 2 == 0 ? even : odd).push_back(cell);
            }
        }
    }
};

/// Calls visit(neighbour) for the up to four cells beside a cell.
template <class Visit>
void VisitBeside(const Level& level, std::uint32_t cell, Visit visit)
{
    const std::uint32_t x = cell % level.width;
    if (cell >= level.width)
        visit(cell - level.width);
    if (x > 0)
        visit(cell - 1);
    if (x + 1 < level.width)
        visit(cell + 1);
    if (cell + level.width < level.values.size())
        visit(cell + level.width);
}

/// The grid at half its size: each value the mean of those of the up to four cells that have one.
Level Halve(const Level& fine)
{
    Level coarse;
    coarse.width = (fine.width + 1) / 2;
    coarse.height = (fine.height + 1) / 2;
    coarse.values.reserve(std::size_t{coarse.width} * coarse.height);
    for (std::uint32_t y = 0; y < coarse.height; ++y) {
        for (std::uint32_t x = 0; x < coarse.width; ++x) {
            double sum = 0.0;
            int count = 0;
            for (std::uint32_t j = 2 * y; j < std::min(2 * y + 2, fine.height); ++j) {
                for (std::uint32_t i = 2 * x; i < std::min(2 * x + 2, fine.width); ++i) {
                    const float value = fine.values[i + std::size_t{j} * fine.width];
                    sum += std::isnan(value) ? 0.0 : static_cast<double>(value);
                    count += std::isnan(value) ? 0 : 1;
                }
            }
            coarse.values.push_back(count > 0 ? static_cast<float>(sum / count)
                                              : std::numeric_limits<float>::quiet_NaN());
        }
    }
    coarse.FindHoles();
    return coarse;
}

/// Gives the holes of a level first values, from the level of half its size.
void Interpolate(const Level& coarse, Level& fine)
{
    // A cell lies a quarter of a coarse cell off the middle of its parent.
    const auto other = [](std::uint32_t index, std::uint32_t size) {
        const std::uint32_t parent = index / 2;
        if (index % 2 == 0)
            return parent > 0 ? parent - 1 : parent;
        return std::min(parent + 1, size - 1);
    };
    const auto at = [&](std::uint32_t x, std::uint32_t y) {
        return static_cast<double>(coarse.values[x + std::size_t{y} * coarse.width]);
    };
    fine.VisitHoles([&](std::uint32_t hole) {
        const std::uint32_t x = hole % fine.width;
        const std::uint32_t y = hole / fine.width;
        const std::uint32_t besideX = other(x, coarse.width);
        const std::uint32_t besideY = other(y, coarse.height);
        const double line = 0.75 * at(x / 2, y / 2) + 0.25 * at(besideX, y / 2);
        const double besideLine = 0.75 * at(x / 2, besideY) + 0.25 * at(besideX, besideY);
        fine.values[hole] = static_cast<float>(0.75 * line + 0.25 * besideLine);
    });
}

/// The mean of the neighbours of a cell at the edge of the grid.
float MeanBeside(const Level& level, std::uint32_t cell)
{
    double sum = 0.0;
    int count = 0;
    VisitBeside(level, cell, [&](std::uint32_t beside) {
        sum += static_cast<double>(level.values[beside]);
        ++count;
    });
    return static_cast<float>(sum / count);
}

/// Draws the holes towards the mean of their neighbours (Gauss and Seidel). Each colour of the chessboard has its
/// neighbours in the other one, so that no cell waits for the one before.
void Relax(Level& level, int rounds)
{
    const std::size_t width = level.width;
    const auto relaxInner = [&](std::uint32_t hole) {
        float* cell = &level.values[hole];
        *cell = ((cell[-1] + cell[1]) + (*(cell - width) + cell[width])) * 0.25f;
    };
    for (int round = 0; round < rounds; ++round) {
        std::for_each(level.even.begin(), level.even.end(), relaxInner);
        std::for_each(level.odd.begin(), level.odd.end(), relaxInner);
        for (const std::uint32_t hole : level.outer)
            level.values[hole] = MeanBeside(level, hole);
    }
}

/// Cuts off what of the hole around a cell lies beyond the values at its border.
/// \param isHole of each cell
/// \param open holes that were not visited before; those of this hole are taken out
void ClampHole(Level& level, std::uint32_t start, const std::vector<bool>& isHole, std::vector<bool>& open)
{
    float low = std::numeric_limits<float>::max();
    float high = std::numeric_limits<float>::lowest();
    std::vector<std::uint32_t> cells{start};
    open[start] = false;
    for (std::size_t next = 0; next < cells.size(); ++next) {
        VisitBeside(level, cells[next], [&](std::uint32_t beside) {
            if (open[beside]) {
                open[beside] = false;
                cells.push_back(beside);
            } else if (!isHole[beside]) {
                low = std::min(low, level.values[beside]);
                high = std::max(high, level.values[beside]);
            }
        });
    }
    for (const std::uint32_t cell : cells)
        level.values[cell] = std::clamp(level.values[cell], low, high);
}

/// Keeps every hole within the values at its border: the coarse levels saw further than that, and the rounds may not
/// have undone it yet.
void ClampHoles(Level& level)
{
    std::vector<bool> open(level.values.size(), false);
    level.VisitHoles([&](std::uint32_t hole) { open[hole] = true; });
    const std::vector<bool> isHole = open;
    level.VisitHoles([&](std::uint32_t hole) {
        if (open[hole])
            ClampHole(level, hole, isHole, open);
    });
}

}  // namespace

void FillHolesSmoothly(std::vector<float>& values, int width, int height)
{
    constexpr int kFinestRounds = 12;
    constexpr int kMostRounds = 128;
    std::vector<Level> levels(1);
    levels[0].width = static_cast<std::uint32_t>(width);
    levels[0].height = static_cast<std::uint32_t>(height);
    levels[0].values.swap(values);
    levels[0].FindHoles();
    while (levels.back().HasHoles())
        levels.push_back(Halve(levels.back()));
    // From coarse to fine: each level starts from a surface that is right but for its finest detail, which few rounds
    // settle. The coarse ones are small, so they get more.
    for (std::size_t i = levels.size() - 1; i-- > 0;) {
        Interpolate(levels[i + 1], levels[i]);
        Relax(levels[i], i < 4 ? kFinestRounds << i : kMostRounds);
    }
    ClampHoles(levels[0]);
    levels[0].values.swap(values);
}

}  // namespace tessara
