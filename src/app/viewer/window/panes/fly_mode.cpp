#include "app/viewer/window/panes/fly_mode.h"

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

constexpr int kTick = 15;              // milliseconds
constexpr double kLookDegrees = 0.15;  // for a unit of the mouse's way
constexpr double kLongestTick = 0.1;   // seconds: a frame that took longer doesn't throw anybody out of the scene
constexpr int kFarthestLook = 200;     // units: what goes farther at once is the mouse being put back

}  // namespace

FlyMode::FlyMode(wxWindow& pane, std::function<void()> changed) : pane_(pane), changed_(std::move(changed))
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Tick(); });
    pane_.Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) { OnKey(event, true); });
    pane_.Bind(wxEVT_KEY_UP, [this](wxKeyEvent& event) { OnKey(event, false); });
    pane_.Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { OnMotion(event); });
    pane_.Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        Stop();
        event.Skip();
    });
    pane_.Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { Stop(); });
}

void FlyMode::Start(CameraController& camera)
{
    if (IsOn())
        return;
    input_ = {};
    pane_.SetFocus();
    pane_.SetCursor(wxCursor(wxCURSOR_BLANK));
    if (!pane_.HasCapture())
        pane_.CaptureMouse();
    camera_ = &camera;
    CenterMouse();
    last_ = std::chrono::steady_clock::now();
    timer_.Start(kTick);
    changed_();
}

void FlyMode::Stop()
{
    if (!std::exchange(camera_, nullptr))
        return;
    timer_.Stop();
    if (pane_.HasCapture())
        pane_.ReleaseMouse();
    pane_.SetCursor(wxNullCursor);
    changed_();
}

void FlyMode::CenterMouse()
{
    const wxSize size = pane_.GetClientSize();
    center_ = wxPoint(size.x / 2, size.y / 2);
    pane_.WarpPointer(center_.x, center_.y);
}

void FlyMode::OnMotion(wxMouseEvent& event)
{
    if (!IsOn()) {
        event.Skip();
        return;
    }
    const wxPoint way = event.GetPosition() - center_;
    if (way == wxPoint(0, 0))
        return;
    if (std::max(std::abs(way.x), std::abs(way.y)) < kFarthestLook)
        camera_->Look(way.x * kLookDegrees, way.y * kLookDegrees);
    CenterMouse();
}

/// \return whether the key steers
bool FlyMode::Steer(int key, bool down)
{
    const auto set = [down](int& axis, int value) {
        if (down)
            axis = value;
        else if (axis == value)
            axis = 0;
    };
    switch (key) {
    case 'W':
    case WXK_UP:
        set(input_.forward, 1);
        return true;
    case 'S':
    case WXK_DOWN:
        set(input_.forward, -1);
        return true;
    case 'D':
    case WXK_RIGHT:
        set(input_.right, 1);
        return true;
    case 'A':
    case WXK_LEFT:
        set(input_.right, -1);
        return true;
    case 'E':
    case WXK_PAGEUP:
        set(input_.up, 1);
        return true;
    case 'Q':
    case WXK_PAGEDOWN:
        set(input_.up, -1);
        return true;
    default:
        return false;
    }
}

void FlyMode::OnKey(wxKeyEvent& event, bool down)
{
    if (!IsOn() || event.ControlDown() || event.AltDown()) {
        event.Skip();
        return;
    }
    input_.fast = event.GetKeyCode() == WXK_SHIFT ? down : event.ShiftDown();
    // While the mouse is captured, keys come here alone.
    if (down && (event.GetKeyCode() == WXK_ESCAPE || event.GetKeyCode() == 'F'))
        Stop();
    else if (!Steer(event.GetKeyCode(), down))
        event.Skip();
}

void FlyMode::Tick()
{
    const auto now = std::chrono::steady_clock::now();
    const double seconds = std::chrono::duration<double>(now - std::exchange(last_, now)).count();
    if (!IsOn() || !IsMoving())
        return;
    camera_->Fly(input_, std::min(seconds, kLongestTick));
}

}  // namespace tessara
