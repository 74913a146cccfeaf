#include "app/viewer/window/main_window.h"
#include "app/viewer/window/map_pane.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/window_commands.h"

#include <wx/menu.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

namespace tessara {

namespace {

constexpr double kStep = 0.08;  // of the distance to what is looked at, for a press of an arrow key
constexpr double kRise = 0.06;

}  // namespace

bool MainWindow::IsTyping() const
{
    const wxWindow* focus = FindFocus();
    return dynamic_cast<const wxTextEntry*>(focus) || dynamic_cast<const wxSpinCtrl*>(focus) ||
           dynamic_cast<const wxSpinCtrlDouble*>(focus) ||
           (focus && dynamic_cast<const wxSpinCtrlDouble*>(focus->GetParent()));
}

void MainWindow::OnKey(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (key == WXK_ESCAPE && Escape())
        return;
    if (event.ControlDown() || event.AltDown() || picture_->IsFlying()) {
        event.Skip();
        return;
    }
    if (FindFocus() == picture_ && OnSteeringKey(key))
        return;
    const int command = IsTyping() ? 0 : CommandOfKey(key);
    if (command == 0 || (command == kShowAll && FindFocus() != picture_ && FindFocus() != map_))
        event.Skip();
    else if (GetMenuBar()->IsEnabled(command))
        Run(command);
}

/// Keys that move the camera while the picture has the keyboard.
bool MainWindow::OnSteeringKey(int key)
{
    if (!viewer_ || !viewer_->HasTerrain())
        return false;
    CameraController& camera = viewer_->Camera();
    switch (key) {
    case WXK_LEFT:
        camera.Step(-kStep, 0.0, 0.0);
        break;
    case WXK_RIGHT:
        camera.Step(kStep, 0.0, 0.0);
        break;
    case WXK_UP:
        camera.Step(0.0, kStep, 0.0);
        break;
    case WXK_DOWN:
        camera.Step(0.0, -kStep, 0.0);
        break;
    case WXK_PAGEUP:
        camera.Step(0.0, 0.0, kRise);
        break;
    case WXK_PAGEDOWN:
        camera.Step(0.0, 0.0, -kRise);
        break;
    default:
        return false;
    }
    return true;
}

/// \return whether there was something to escape from
bool MainWindow::Escape()
{
    if (loader_)
        loader_->Cancel();
    else if (picture_->HasBrush())
        picture_->SetBrush(false);
    else if (FindFocus() != picture_)
        picture_->SetFocus();
    else
        return false;
    return true;
}

}  // namespace tessara
