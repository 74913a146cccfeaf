#include "app/viewer/terrain/height_history.h"

#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tessara {

namespace {

/// The heights of an area in one row of the grid. \tparam Data constant or not
template <class Data>
auto RowOf(Data& data, const GridArea& area, int row)
{
    return data.metres.begin() + static_cast<std::ptrdiff_t>(area.left) + static_cast<std::ptrdiff_t>(row) * data.width;
}

}  // namespace

GridArea Union(const GridArea& a, const GridArea& b)
{
    if (a.IsEmpty())
        return b;
    if (b.IsEmpty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

GridArea HeightHistory::AreaOf(const ElevationData& data, const Tile& tile)
{
    return {tile.first * kTile, tile.second * kTile, std::min((tile.first + 1) * kTile, data.width),
            std::min((tile.second + 1) * kTile, data.height)};
}

std::size_t HeightHistory::SizeOf(const Stroke& stroke)
{
    return stroke.tiles.size() * kTile * kTile * sizeof(float);
}

void HeightHistory::Begin()
{
    for (const Stroke& stroke : undone_)
        kept_ -= SizeOf(stroke);
    undone_.clear();
    current_ = {};
}

void HeightHistory::Keep(const ElevationData& data, const GridArea& area)
{
    if (area.IsEmpty())
        return;
    for (int y = area.top / kTile; y <= (area.bottom - 1) / kTile; ++y) {
        for (int x = area.left / kTile; x <= (area.right - 1) / kTile; ++x) {
            if (current_.tiles.contains({x, y}))
                continue;
            const GridArea tile = AreaOf(data, {x, y});
            std::vector<float> heights;
            heights.reserve(std::size_t{kTile} * kTile);
            for (int row = tile.top; row < tile.bottom; ++row) {
                const auto first = RowOf(data, tile, row);
                heights.insert(heights.end(), first, first + (tile.right - tile.left));
            }
            current_.tiles.emplace(Tile{x, y}, std::move(heights));
        }
    }
}

/// Whether the grid has those heights in a tile, bit for bit.
bool HeightHistory::Holds(const ElevationData& data, const Tile& tile, const std::vector<float>& heights)
{
    const GridArea area = AreaOf(data, tile);
    const auto columns = static_cast<std::size_t>(area.right - area.left);
    const float* kept = heights.data();
    for (int row = area.top; row < area.bottom; ++row, kept += columns) {
        if (std::memcmp(&*RowOf(data, area, row), kept, columns * sizeof(float)) != 0)
            return false;
    }
    return true;
}

void HeightHistory::End(const ElevationData& data)
{
    std::erase_if(current_.tiles, [&](const auto& tile) { return Holds(data, tile.first, tile.second); });
    if (!current_.tiles.empty()) {
        current_.state = ++lastState_;
        kept_ += SizeOf(current_);
        done_.push_back(std::move(current_));
    }
    current_ = {};
    DropOldest();
}

void HeightHistory::DropOldest()
{
    while (kept_ > limit_ && done_.size() > 1) {
        kept_ -= SizeOf(done_.front());
        firstState_ = done_.front().state;
        done_.pop_front();
    }
}

GridArea HeightHistory::Swap(ElevationData& data, Stroke& stroke)
{
    GridArea changed;
    for (auto& [place, heights] : stroke.tiles) {
        const GridArea tile = AreaOf(data, place);
        float* other = heights.data();
        for (int row = tile.top; row < tile.bottom; ++row, other += tile.right - tile.left)
            std::swap_ranges(other, other + (tile.right - tile.left), RowOf(data, tile, row));
        changed = Union(changed, tile);
    }
    return changed;
}

GridArea HeightHistory::Undo(ElevationData& data)
{
    if (done_.empty())
        return {};
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    return Swap(data, undone_.back());
}

GridArea HeightHistory::Redo(ElevationData& data)
{
    if (undone_.empty())
        return {};
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    return Swap(data, done_.back());
}

}  // namespace tessara
