#pragma once

#include "app/viewer/terrain/height_brush.h"
#include "app/viewer/terrain/height_history.h"
#include "host/vector3.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>

namespace tessara {

class TerrainDocument;

/// Works on the heights of a terrain with a brush. What it does between Begin and End is one stroke, which can be
/// undone and redone as one.
class Sculptor {
public:
    /// \param cells whose heights have changed \param finished no stroke is going on: what takes long may follow
    using Listener = std::function<void(const GridArea& cells, bool finished)>;

    /// \param document outlives this object
    Sculptor(TerrainDocument& document, Listener changed);

    /// Begins a stroke at a point of the ground, and ends one that is going on.
    void Begin(const Vector3& ground, const BrushSettings& brush);

    /// Works along the way from where the brush was to a point of the ground. Without a stroke it does nothing.
    void Continue(const Vector3& ground, const BrushSettings& brush, double seconds);

    /// Ends the stroke, if there is one.
    void End();

    bool IsStroking() const noexcept { return stroke_.has_value(); }

    bool CanUndo() const noexcept { return history_.CanUndo() || HasWorked(); }
    bool CanRedo() const noexcept { return history_.CanRedo(); }

    /// Takes the last stroke back, or repeats the last one taken back, if there is one.
    void Undo();
    void Redo();

    /// Tells two states of the heights apart. Undone strokes lead back to an earlier state.
    std::uint64_t State() const noexcept { return HasWorked() ? kInTheMiddle : history_.State(); }

private:
    static constexpr std::uint64_t kInTheMiddle = std::numeric_limits<std::uint64_t>::max();
    struct Stroke {
        Vector3 at;          // where the brush was last
        double level = 0.0;  // of the ground where it began, in metres
        GridArea cells;      // that it has worked at
    };

    bool HasWorked() const noexcept { return stroke_ && !stroke_->cells.IsEmpty(); }
    GridArea Dab(const BrushSettings& brush, const BrushPoint& point);

    TerrainDocument& document_;
    Listener changed_;
    HeightHistory history_;
    std::optional<Stroke> stroke_;
};

}  // namespace tessara
