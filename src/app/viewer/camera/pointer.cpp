#include "app/viewer/camera/pointer.h"

#include "app/viewer/terrain/sculptor.h"
#include "app/viewer/work/view_settings.h"

#include <utility>

namespace tessara {

Pointer::Pointer(const ViewSettings& settings, std::function<void()> moved)
    : settings_(settings), moved_(std::move(moved))
{
}

void Pointer::Attach(CameraController* camera, Sculptor* sculptor) noexcept
{
    camera_ = camera;
    sculptor_ = sculptor;
    drag_ = DragKind::None;
}

void Pointer::Moved() const
{
    if (brush_)
        moved_();
}

void Pointer::Hover(const PicturePoint& place)
{
    place_ = place;
    Moved();
}

void Pointer::Leave()
{
    place_.reset();
    Moved();
}

void Pointer::TakeBrush(bool brush)
{
    brush_ = brush;
    moved_();
}

std::optional<Vector3> Pointer::Ground() const
{
    return camera_ && place_ ? camera_->PointAt(*place_) : std::nullopt;
}

void Pointer::Grab(DragKind kind, const PicturePoint& place)
{
    EndDrag();
    if (!camera_)
        return;
    camera_->Grab(place);
    drag_ = kind;
}

/// The brush only works in the real-time mode.
void Pointer::BeginStroke(const PicturePoint& place)
{
    EndDrag();
    place_ = place;
    if (const auto ground = sculptor_ && settings_.realTime ? Ground() : std::nullopt)
        sculptor_->Begin(*ground, settings_.brush);
}

void Pointer::Drag(const PicturePoint& place)
{
    place_ = place;
    if (drag_ == DragKind::Orbit)
        camera_->OrbitTo(place);
    else if (drag_ == DragKind::Pan)
        camera_->PanTo(place);
}

void Pointer::EndDrag()
{
    drag_ = DragKind::None;
    if (sculptor_)
        sculptor_->End();
}

void Pointer::Zoom(const PicturePoint& place, double steps)
{
    place_ = place;
    if (camera_)
        camera_->Zoom(place, steps);
}

void Pointer::ContinueStroke(double seconds)
{
    if (!sculptor_ || !sculptor_->IsStroking())
        return;
    if (const auto ground = Ground())
        sculptor_->Continue(*ground, settings_.brush, seconds);
}

}  // namespace tessara
