#include "app/view/sea.h"

#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

/// A sea has at least this share of a terrain, and this many cells.
constexpr double kLeastShare = 0.004;
constexpr std::size_t kLeastCells = 64;

/// No dry land lies so far below a sea.
constexpr double kDeepestLand = 450.0;

/// A sea whose ground isn't flat takes at least this share of the grid's edge.
constexpr double kLeastEdge = 0.2;

/// Cliffs as high as this all along a coast are the border of a hole that was filled.
constexpr double kWall = 100.0;

/// What is known of the water that reaches the edge of the grid.
struct Water {
    std::vector<std::uint8_t> covers;  // 1 for its cells
    std::size_t cells = 0;
    std::size_t level = 0;     // cells at the level
    std::size_t lowest = 0;    // cells at the lowest height of all
    std::size_t edge = 0;      // cells on the edge of the grid
    double depth = 0.0;        // greatest
    std::vector<float> coast;  // heights of the land next to it
};

class Flood {
public:
    Flood(const ElevationData& data, double level) : data_(data), level_(level)
    {
        water_.covers.assign(data.metres.size(), 0);
        seen_.assign(data.metres.size(), 0);
    }

    Water Run()
    {
        for (int x = 0; x < data_.width; ++x) {
            Visit(x, 0);
            Visit(x, data_.height - 1);
        }
        for (int y = 0; y < data_.height; ++y) {
            Visit(0, y);
            Visit(data_.width - 1, y);
        }
        while (!open_.empty()) {
            const std::size_t cell = open_.back();
            open_.pop_back();
            Count(cell);
            const auto x = static_cast<int>(cell % static_cast<std::size_t>(data_.width));
            const auto y = static_cast<int>(cell / static_cast<std::size_t>(data_.width));
            for (int row = std::max(y - 1, 0); row <= std::min(y + 1, data_.height - 1); ++row) {
                for (int column = std::max(x - 1, 0); column <= std::min(x + 1, data_.width - 1); ++column)
                    Visit(column, row);
            }
        }
        return std::move(water_);
    }

private:
    void Visit(int x, int y)
    {
        const std::size_t cell =
            static_cast<std::size_t>(x) + static_cast<std::size_t>(y) * static_cast<std::size_t>(data_.width);
        if (water_.covers[cell] != 0 || !data_.HasData(cell))
            return;
        if (static_cast<double>(data_.metres[cell]) > level_ + Sea::kTolerance) {
            if (water_.cells > 0 && !std::exchange(seen_[cell], std::uint8_t{1}))
                water_.coast.push_back(data_.metres[cell]);
            return;
        }
        water_.covers[cell] = 1;
        const bool onEdge = x == 0 || y == 0 || x == data_.width - 1 || y == data_.height - 1;
        water_.edge += onEdge ? 1 : 0;
        open_.push_back(cell);
    }

    void Count(std::size_t cell)
    {
        const double depth = level_ - static_cast<double>(data_.metres[cell]);
        ++water_.cells;
        water_.level += depth <= Sea::kTolerance ? 1 : 0;
        water_.lowest += data_.metres[cell] == data_.minimum ? 1 : 0;
        water_.depth = std::max(water_.depth, depth);
    }

    const ElevationData& data_;
    double level_;
    Water water_;
    std::vector<std::uint8_t> seen_;
    std::vector<std::size_t> open_;
};

/// Whether land rises out of the water as from a sea: not everywhere as a wall.
bool HasCoast(Water& water)
{
    if (water.coast.empty())
        return true;
    const auto low = water.coast.begin() + static_cast<std::ptrdiff_t>(water.coast.size() / 4);
    std::nth_element(water.coast.begin(), low, water.coast.end());
    return static_cast<double>(*low) <= kWall;
}

bool IsSea(Water& water, const ElevationData& data)
{
    const auto share = [&](std::size_t count) { return static_cast<double>(count) / static_cast<double>(water.cells); };
    if (water.cells < kLeastCells ||
        static_cast<double>(water.cells) < kLeastShare * static_cast<double>(data.metres.size()))
        return false;
    if (share(water.level) >= 0.5)
        return HasCoast(water);
    if (water.depth > kDeepestLand)
        return true;
    // Flat ground at another height is the floor of a lake or of a basin.
    const auto edge = static_cast<double>(2 * (data.width + data.height) - 4);
    return share(water.lowest) < 0.5 && static_cast<double>(water.edge) >= kLeastEdge * edge && HasCoast(water);
}

}  // namespace

std::optional<Sea> SeaOf(const ElevationData& data, const SeaChoice& choice)
{
    const double level = choice.level.value_or(0.0);
    if (choice.shown)
        return *choice.shown ? std::optional(Sea{level, {}}) : std::nullopt;
    if (static_cast<double>(data.minimum) > level + Sea::kTolerance)
        return std::nullopt;
    Water water = Flood(data, level).Run();
    if (!IsSea(water, data))
        return std::nullopt;
    Sea sea{level, std::move(water.covers)};
    bool isDry = false;
    for (std::size_t cell = 0; cell < sea.dry.size(); ++cell) {
        const bool low = static_cast<double>(data.metres[cell]) <= level + Sea::kTolerance;
        sea.dry[cell] = low && sea.dry[cell] == 0 ? 1 : 0;
        isDry = isDry || sea.dry[cell] != 0;
    }
    if (!isDry)
        sea.dry.clear();
    return sea;
}

}  // namespace tessara
