#pragma once

#include "app/view/light_map.h"

#include <cstddef>
#include <cstdint>
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
    void End(const ElevationData& data);

    bool CanUndo() const noexcept { return !done_.empty(); }
    bool CanRedo() const noexcept { return !undone_.empty(); }

    /// Takes the last stroke back, or repeats the last one taken back. \return the area that changed; empty where there
    /// is no stroke
    GridArea Undo(ElevationData& data);
    GridArea Redo(ElevationData& data);

    /// The same number means the same heights, as far as only strokes change them and none is going on.
    std::uint64_t State() const noexcept { return done_.empty() ? firstState_ : done_.back().state; }

private:
    static constexpr int kTile = 32;
    using Tile = std::pair<int, int>;  // column and row of tiles
    struct Stroke {
        std::map<Tile, std::vector<float>> tiles;  // the other heights of each
        std::uint64_t state = 0;                   // after it
    };
    static GridArea AreaOf(const ElevationData& data, const Tile& tile);
    static GridArea Swap(ElevationData& data, Stroke& stroke);
    static bool Holds(const ElevationData& data, const Tile& tile, const std::vector<float>& heights);
    static std::size_t SizeOf(const Stroke& stroke);
    void DropOldest();

    std::size_t limit_;
    std::size_t kept_ = 0;  // bytes in done_ and undone_
    Stroke current_;
    std::deque<Stroke> done_;
    std::vector<Stroke> undone_;
    std::uint64_t firstState_ = 0;  // before the oldest stroke
    std::uint64_t lastState_ = 0;   // the last number given
};

/// The least area that holds both; an empty one counts for nothing.
GridArea Union(const GridArea& a, const GridArea& b);

}  // namespace tessara
