#include "app/viewer/terrain/sculptor.h"

#include "app/viewer/terrain/terrain_document.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessara {

namespace {

/// The brush works at this many of its radii along its way, but not at more places at once than these.
constexpr double kDabDistance = 0.3;
constexpr int kMostDabs = 12;

/// What the first touch does, and the longest time that counts at once.
constexpr double kFirstTouch = 0.03;
constexpr double kLongest = 0.1;

}  // namespace

Sculptor::Sculptor(TerrainDocument& document, Listener changed) : document_(document), changed_(std::move(changed)) {}

void Sculptor::Begin(const Vector3& ground, const BrushSettings& brush)
{
    End();
    history_.Begin();
    stroke_ = Stroke{ground, document_.Ground().MetresAt(ground.x, ground.z), {}};
    Continue(ground, brush, kFirstTouch);
}

/// A fast hand or a slow machine leaves no gaps.
void Sculptor::Continue(const Vector3& ground, const BrushSettings& brush, double seconds)
{
    if (!stroke_)
        return;
    const double time = std::clamp(seconds, 0.0, kLongest);
    const Vector3 from = std::exchange(stroke_->at, ground);
    const double length = std::hypot(ground.x - from.x, ground.z - from.z);
    const double wanted = std::ceil(length / (kDabDistance * brush.radius));
    const int dabs = static_cast<int>(std::clamp(wanted, 1.0, static_cast<double>(kMostDabs)));
    GridArea changed;
    for (int dab = 1; dab <= dabs; ++dab) {
        const Vector3 at = from + (ground - from) * (static_cast<double>(dab) / dabs);
        changed = Union(changed, Dab(brush, {at.x, at.z, stroke_->level, time / dabs}));
    }
    stroke_->cells = Union(stroke_->cells, changed);
    changed_(changed, false);
}

/// \return the cells that it worked at
GridArea Sculptor::Dab(const BrushSettings& brush, const BrushPoint& point)
{
    const auto floor = static_cast<float>(document_.Floor());
    return document_.Edit([&](ElevationData& data) {
        const GridArea area = BrushArea(data, point, brush.radius);
        history_.Keep(data, area);
        Brush(data, area, brush, point, floor);
        return area;
    });
}

void Sculptor::End()
{
    if (!stroke_)
        return;
    history_.End(document_.Data());
    const GridArea cells = std::exchange(stroke_, std::nullopt)->cells;
    document_.Rescan();
    changed_(cells, true);
}

void Sculptor::Undo()
{
    End();
    if (!history_.CanUndo())
        return;
    const GridArea cells = document_.Edit([this](ElevationData& data) { return history_.Undo(data); });
    document_.Rescan();
    changed_(cells, true);
}

void Sculptor::Redo()
{
    End();
    if (!history_.CanRedo())
        return;
    const GridArea cells = document_.Edit([this](ElevationData& data) { return history_.Redo(data); });
    document_.Rescan();
    changed_(cells, true);
}

}  // namespace tessara
