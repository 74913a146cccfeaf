#pragma once

#include "app/scene/light_map.h"

#include <cstddef>
#include <deque>
#include <map>
#include <utility>
#include <vector>

namespace tessara {

struct ElevationData;

/// The heights that strokes of a brush changed, to be undone and redone. Keeps as many strokes as fit into its memory,
/// the youngest at least.
class HeightHistory {
public:
    /// \param limit bytes of heights to keep
    explicit HeightHistory(std::size_t limit = std::size_t{256} << 20) : limit_(limit) {}

    /// A stroke begins; what could be redone can't any more.
    void Begin();

    /// An area is about to change as part of the stroke.
    void Keep(const ElevationData& data, const GridArea& area);

    /// The stroke has ended. One that changed nothing is forgotten.
    void End();

    bool CanUndo() const noexcept { return !done_.empty(); }
    bool CanRedo() const noexcept { return !undone_.empty(); }

    /// Takes the last stroke back, or repeats the last one taken back. \return the area that changed; empty where there
    /// is no stroke
    GridArea Undo(ElevationData& data);
    GridArea Redo(ElevationData& data);

    void Clear();

private:
    static constexpr int kTile = 32;
    using Tile = std::pair<int, int>;                   // column and row of tiles
    using Stroke = std::map<Tile, std::vector<float>>;  // the other heights of each tile
    static GridArea AreaOf(const ElevationData& data, const Tile& tile);
    static GridArea Swap(ElevationData& data, Stroke& stroke);
    static std::size_t SizeOf(const Stroke& stroke);
    void DropOldest();

    std::size_t limit_;
    std::size_t kept_ = 0;  // bytes in done_ and undone_
    Stroke current_;
    std::deque<Stroke> done_;
    std::vector<Stroke> undone_;
};

/// The least area that holds both; an empty one counts for nothing.
GridArea Union(const GridArea& a, const GridArea& b);

}  // namespace tessara
