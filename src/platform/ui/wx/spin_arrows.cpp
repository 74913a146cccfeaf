#include "platform/ui/wx/spin_arrows.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <utility>

namespace tessara {

namespace {

constexpr int kFirstRepeat = 400;  // milliseconds
constexpr int kNextRepeat = 70;

/// A triangle in the middle of a rectangle.
void DrawArrow(wxDC& dc, const wxRect& place, bool up)
{
    const int half = wxMax(2, wxMin(place.width, place.height) / 3);
    const wxPoint middle(place.x + place.width / 2, place.y + place.height / 2);
    const int tip = up ? -half / 2 : half / 2;
    const wxPoint corners[] = {
        {middle.x - half, middle.y - tip}, {middle.x + half, middle.y - tip}, {middle.x, middle.y + tip}};
    dc.DrawPolygon(3, corners);
}

}  // namespace

SpinArrows::SpinArrows(wxWindow* parent, int id, const wxRect& place, std::function<void(int)> step)
    : wxControl(parent, id, place.GetPosition(), place.GetSize(), wxBORDER_NONE), step_(std::move(step)), repeat_(this)
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &SpinArrows::OnPaint, this);
    Bind(wxEVT_LEFT_DOWN, &SpinArrows::OnPress, this);
    Bind(wxEVT_LEFT_DCLICK, &SpinArrows::OnPress, this);
    Bind(wxEVT_LEFT_UP, &SpinArrows::OnRelease, this);
    Bind(wxEVT_TIMER, &SpinArrows::OnRepeat, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
        repeat_.Stop();
        pressed_ = 0;
        Refresh();
    });
}

void SpinArrows::OnPaint(wxPaintEvent&)
{
    wxAutoBufferedPaintDC dc(this);
    const wxSize size = GetClientSize();
    dc.SetBackground(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    dc.Clear();
    const wxColour ink = wxSystemSettings::GetColour(IsEnabled() ? wxSYS_COLOUR_BTNTEXT : wxSYS_COLOUR_GRAYTEXT);
    const wxColour line = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW);
    const wxRect upper(0, 0, size.x, size.y / 2);
    const wxRect lower(0, size.y / 2, size.x, size.y - size.y / 2);
    if (pressed_ != 0) {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(line);
        dc.DrawRectangle(pressed_ > 0 ? upper : lower);
    }
    dc.SetPen(line);
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(wxRect(size));
    dc.DrawLine(0, size.y / 2, size.x, size.y / 2);
    dc.SetPen(ink);
    dc.SetBrush(ink);
    DrawArrow(dc, upper, true);
    DrawArrow(dc, lower, false);
}

void SpinArrows::OnPress(wxMouseEvent& event)
{
    pressed_ = event.GetY() < GetClientSize().y / 2 ? 1 : -1;
    CaptureMouse();
    Refresh();
    step_(pressed_);
    repeat_.StartOnce(kFirstRepeat);
}

void SpinArrows::OnRelease(wxMouseEvent&)
{
    repeat_.Stop();
    pressed_ = 0;
    if (HasCapture())
        ReleaseMouse();
    Refresh();
}

void SpinArrows::OnRepeat(wxTimerEvent&)
{
    if (pressed_ == 0)
        return;
    step_(pressed_);
    repeat_.StartOnce(kNextRepeat);  // behind the step: however long it takes, the desktop draws in between
}

}  // namespace tessara
