#include "app/viewer/picture/view_text.h"
#include "app/viewer/viewer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessara {

namespace {

/// The brush works at this many of its radii along the way of the mouse, but not at more places in a frame than these.
constexpr double kDabDistance = 0.3;
constexpr int kMostDabs = 12;

}  // namespace

void Viewer::Hover(const PicturePoint& point)
{
    mouse_ = point;
    if (brushShown_)
        changed_({true, false, false});
}

void Viewer::Leave()
{
    mouse_.reset();
    if (brushShown_)
        changed_({true, false, false});
}

void Viewer::SetBrushShown(bool shown)
{
    brushShown_ = shown;
    changed_({true, false, false});
}

void Viewer::BeginOrbit(const PicturePoint& point)
{
    EndDrag();
    if (!document_)
        return;
    controller_->Grab(point);
    drag_ = DragKind::Orbit;
}

void Viewer::BeginPan(const PicturePoint& point)
{
    EndDrag();
    if (!document_)
        return;
    controller_->Grab(point);
    drag_ = DragKind::Pan;
}

void Viewer::BeginStroke(const PicturePoint& point)
{
    EndDrag();
    mouse_ = point;
    const auto ground = document_ && settings_.realTime ? controller_->PointAt(point) : std::nullopt;
    if (!ground)
        return;
    strokeAt_ = *ground;
    strokeLevel_ = document_->Ground().MetresAt(ground->x, ground->z);
    strokeArea_ = {};
    drag_ = DragKind::Stroke;
    document_->BeginStroke();
    Stroke(0.03);
}

void Viewer::Drag(const PicturePoint& point)
{
    mouse_ = point;
    switch (drag_) {
    case DragKind::Orbit:
        controller_->OrbitTo(point);
        break;
    case DragKind::Pan:
        controller_->PanTo(point);
        break;
    case DragKind::Stroke:
    case DragKind::None:
        return;
    }
    CameraMoved();
}

void Viewer::EndDrag()
{
    if (std::exchange(drag_, DragKind::None) != DragKind::Stroke)
        return;
    document_->EndStroke();
    HeightsChanged(strokeArea_, true);
}

void Viewer::ContinueStroke(double seconds)
{
    if (IsStroking())
        Stroke(std::clamp(seconds, 0.0, 0.1));
}

/// Works along the way since the last time, so that a fast hand or a slow machine leaves no gaps.
void Viewer::Stroke(double seconds)
{
    const auto ground = mouse_ ? controller_->PointAt(*mouse_) : std::nullopt;
    if (!ground)
        return;
    const Vector3 from = std::exchange(strokeAt_, *ground);
    const double length = std::hypot(ground->x - from.x, ground->z - from.z);
    const double wanted = std::ceil(length / (kDabDistance * settings_.brush.radius));
    const int dabs = static_cast<int>(std::clamp(wanted, 1.0, static_cast<double>(kMostDabs)));
    GridArea changed;
    for (int dab = 1; dab <= dabs; ++dab) {
        const Vector3 at = from + (*ground - from) * (static_cast<double>(dab) / dabs);
        changed = Union(changed, Dab({at.x, at.z, strokeLevel_, seconds / dabs}));
    }
    strokeArea_ = Union(strokeArea_, changed);
    controller_->GroundChanged();
    HeightsChanged(changed, false);
}

/// \return the cells that it worked at
GridArea Viewer::Dab(const BrushPoint& point)
{
    const GridArea area = BrushArea(document_->Data(), point, settings_.brush.radius);
    const auto floor = static_cast<float>(document_->Floor());
    document_->Write(area, Brushed(document_->Data(), area, settings_.brush, point, floor));
    return area;
}

void Viewer::Zoom(const PicturePoint& point, double steps)
{
    if (!document_)
        return;
    controller_->Zoom(point, steps);
    CameraMoved();
}

std::optional<GroundRing> Viewer::Ring() const
{
    if (!brushShown_ || !mouse_)
        return std::nullopt;
    const auto ground = controller_->PointAt(*mouse_);
    if (!ground)
        return std::nullopt;
    return GroundRing{ground->x, ground->z, settings_.brush.radius};
}

std::string Viewer::PlaceUnderMouse() const
{
    const auto ground = document_ && mouse_ ? controller_->PointAt(*mouse_) : std::nullopt;
    return ground ? PlaceText(document_->Data(), ground->x, ground->z) : std::string();
}

std::string Viewer::HeightUnderMouse() const
{
    const auto ground = document_ && mouse_ ? controller_->PointAt(*mouse_) : std::nullopt;
    if (!ground)
        return {};
    return HeightText(document_->Data(), document_->Ground().MetresAt(ground->x, ground->z)) + "   " +
           SlopeText(document_->Ground().SlopeAt(ground->x, ground->z));
}

}  // namespace tessara
