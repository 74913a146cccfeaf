#pragma once

#include "app/viewer/camera/camera_controller.h"

#include <wx/timer.h>
#include <wx/window.h>

#include <chrono>
#include <functional>

namespace tessara {

/// Flying over a terrain: keys steer, the mouse, which is hidden meanwhile, looks around.
class FlyMode {
public:
    /// \param pane has the keyboard while flying; it outlives this object
    /// \param changed flying has begun or ended
    FlyMode(wxWindow& pane, std::function<void()> changed);

    bool IsOn() const noexcept { return camera_ != nullptr; }

    /// \param camera steered until Stop
    void Start(CameraController& camera);
    void Stop();

private:
    void OnKey(wxKeyEvent& event, bool down);
    void OnMotion(wxMouseEvent& event);
    void Tick();
    bool Steer(int key, bool down);
    void CenterMouse();
    bool IsMoving() const noexcept { return input_.forward != 0 || input_.right != 0 || input_.up != 0; }

    wxWindow& pane_;
    std::function<void()> changed_;
    CameraController* camera_ = nullptr;
    FlyInput input_;
    wxPoint center_;
    wxTimer timer_;
    std::chrono::steady_clock::time_point last_;
};

}  // namespace tessara
