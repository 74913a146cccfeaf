#pragma once

#include "app/viewer/camera/camera_controller.h"

#include <functional>
#include <optional>

namespace tessara {

class Sculptor;
struct ViewSettings;

/// The mouse over the picture, and what it does there: it turns and moves the camera, and leads the brush. Places are
/// pixels of the picture. Without a terrain it does nothing.
class Pointer {
public:
    /// \param settings of brush and real-time mode; outlive this object \param moved what the brush shows has changed
    Pointer(const ViewSettings& settings, std::function<void()> moved);

    /// The mouse is over this terrain from now on. \param camera,sculptor outlive their use; null for none: without
    /// the one nothing moves, without the other the ground stays as it is
    void Attach(CameraController* camera, Sculptor* sculptor) noexcept;

    void Hover(const PicturePoint& place);
    void Leave();

    /// The point of the ground under the mouse. \return nothing where there is none
    std::optional<Vector3> Ground() const;

    // Dragging. What is begun ends what was going on.
    void BeginOrbit(const PicturePoint& place) { Grab(DragKind::Orbit, place); }
    void BeginPan(const PicturePoint& place) { Grab(DragKind::Pan, place); }
    void BeginStroke(const PicturePoint& place);
    void Drag(const PicturePoint& place);
    void EndDrag();

    /// Comes nearer to what is under the mouse. \param steps of a wheel, positive towards it
    void Zoom(const PicturePoint& place, double steps);

    /// Time goes on while a stroke is held.
    void ContinueStroke(double seconds);

    /// Whether the brush is at hand, and its outline shown on the ground.
    bool HasBrush() const noexcept { return brush_; }
    void TakeBrush(bool brush);

private:
    enum class DragKind { None, Orbit, Pan };

    void Grab(DragKind kind, const PicturePoint& place);
    void Moved() const;

    const ViewSettings& settings_;
    std::function<void()> moved_;
    CameraController* camera_ = nullptr;
    Sculptor* sculptor_ = nullptr;
    std::optional<PicturePoint> place_;
    DragKind drag_ = DragKind::None;
    bool brush_ = false;
};

}  // namespace tessara
