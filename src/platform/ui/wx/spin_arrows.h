#pragma once

#include <wx/control.h>
#include <wx/timer.h>

#include <functional>

namespace tessara {

/// Two small arrows, one above the other. A press steps once, and again and again while it is held.
class SpinArrows final : public wxControl {
public:
    /// \param step hears 1 for up, -1 for down
    SpinArrows(wxWindow* parent, int id, const wxRect& place, std::function<void(int)> step);

    /// The arrows never take the keyboard from their field.
    bool AcceptsFocus() const override { return false; }

private:
    void OnPaint(wxPaintEvent& event);
    void OnPress(wxMouseEvent& event);
    void OnRelease(wxMouseEvent& event);
    void OnRepeat(wxTimerEvent& event);

    std::function<void(int)> step_;
    wxTimer repeat_;
    int pressed_ = 0;  // 1 or -1 while an arrow is held
};

}  // namespace tessara
