#include "app/viewer/window/commands/window_keys.h"

#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/panes/map_pane.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/panes/window_panes.h"
#include "app/viewer/window/workbench.h"

#include <wx/spinctrl.h>
#include <wx/textctrl.h>

namespace tessara {

namespace {

bool IsTyping(const wxWindow* focus)
{
    return dynamic_cast<const wxTextEntry*>(focus) || dynamic_cast<const wxSpinCtrl*>(focus) ||
           dynamic_cast<const wxSpinCtrlDouble*>(focus) ||
           (focus && dynamic_cast<const wxSpinCtrlDouble*>(focus->GetParent()));
}

/// \return whether there was something to escape from
bool Escape(Workbench& bench)
{
    if (bench.files.IsLoading())
        bench.files.Cancel();
    else if (bench.picture.HasBrush())
        bench.picture.SetBrush(false);
    else if (wxWindow::FindFocus() != &bench.picture)
        bench.picture.SetFocus();
    else
        return false;
    return true;
}

}  // namespace

KeyMeaning HandleKey(Workbench& bench, const wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (key == WXK_ESCAPE && !bench.picture.IsFlying() && Escape(bench))
        return {true};
    if (event.ControlDown() || event.AltDown() || bench.picture.IsFlying())
        return {};
    const wxWindow* const focus = wxWindow::FindFocus();
    if (focus == &bench.picture && bench.picture.Steer(key))
        return {true};
    const Command* const command = IsTyping(focus) ? nullptr : CommandOfKey(key);
    const bool inPane = focus == &bench.picture || focus == &bench.panes.Map();
    if (!command || (command->inPictureOnly && !inPane))
        return {};
    return {true, command->id};
}

}  // namespace tessara
