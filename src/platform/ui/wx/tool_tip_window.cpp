#include "platform/ui/wx/tool_tip_window.h"

#include "platform/ui/wx/tool_tip_markup.h"

#include <gtk/gtk.h>
#include <wx/display.h>
#include <wx/settings.h>

#include <utility>

namespace tessara {

namespace {

constexpr int kRest = 600;   // milliseconds
constexpr int kWatch = 200;  // milliseconds
constexpr int kTicksToGo = 5;
constexpr int kGap = 4;
constexpr int kWidth = 300;
constexpr int kMargin = 6;

std::string Css(const wxColour& color)
{
    return color.GetAsString(wxC2S_HTML_SYNTAX).utf8_string();
}

/// The toolkit shows a popup over a modal dialog as a part of it that takes all input. Here each has its own: the
/// dialog goes on as if there were no tooltip, and the links in the tooltip can be clicked.
void ShareInput(wxPopupWindow& popup)
{
    GtkWidget* const widget = GTK_WIDGET(popup.GetHandle());
    gtk_grab_remove(widget);
    GtkWindowGroup* const group = gtk_window_group_new();
    gtk_window_group_add_window(group, GTK_WINDOW(widget));
    g_object_unref(group);  // the window holds it
}

}  // namespace

/// An open list or another window takes the input, or gives it back.
void ToolTips::InputMoved(void*, int comesBack, ToolTips* self)
{
    if (comesBack == 0 && !self->showing_)
        self->DialogUsed();
}

ToolTips::ToolTips(wxWindow& parent, std::function<void(const std::string&)> follow)
    : parent_(parent), follow_(std::move(follow)), rested_(this), watch_(this)
{
    Bind(wxEVT_TIMER, [this](wxTimerEvent& event) { &event.GetTimer() == &watch_ ? OnWatch() : OnRested(); });
    g_signal_connect(parent_.GetHandle(), "grab-notify", G_CALLBACK(&InputMoved), this);
}

ToolTips::~ToolTips()
{
    g_signal_handlers_disconnect_by_data(parent_.GetHandle(), this);
    if (popup_)
        popup_->Destroy();
}

void ToolTips::MouseOver(wxWindow* over)
{
    const bool known = texts_.count(over) != 0;
    if (over == over_ && (!known || used_ || (popup_ && popup_->IsShown())))
        return;
    if (over != over_)
        used_ = false;
    over_ = over;
    if (known)
        rested_.StartOnce(kRest);
    else
        rested_.Stop();
}

void ToolTips::ShowHelp(const std::string& markup)
{
    Show(markup, popup_ && popup_->IsShown() ? control_ : wxRect(wxGetMousePosition(), wxSize(1, 1)));
}

void ToolTips::DialogUsed()
{
    used_ = true;
    Hide();
}

void ToolTips::Hide()
{
    rested_.Stop();
    watch_.Stop();
    if (popup_)
        popup_->Hide();
}

void ToolTips::OnWatch()
{
    if (IsMouseOnTip() || control_.Contains(wxGetMousePosition()))
        ticksAway_ = 0;
    else if (++ticksAway_ >= kTicksToGo)
        Hide();
}

void ToolTips::OnRested()
{
    const auto text = texts_.find(over_);
    // Neither an open list nor another window that the user is asked in may be covered.
    if (gtk_grab_get_current() != GTK_WIDGET(parent_.GetHandle()))
        return;
    if (text == texts_.end() || !over_->IsShownOnScreen() || !over_->GetScreenRect().Contains(wxGetMousePosition()))
        return;
    Show(text->second, over_->GetScreenRect());
}

void ToolTips::MakePopup()
{
    popup_ = new wxPopupWindow(&parent_, wxBORDER_SIMPLE);
    page_ = new wxHtmlWindow(popup_, wxID_ANY, wxDefaultPosition, wxSize(kWidth, kWidth), wxHW_SCROLLBAR_NEVER);
    page_->SetBorders(kMargin);
    page_->SetStandardFonts(parent_.GetFont().GetPointSize());
    page_->Bind(wxEVT_HTML_LINK_CLICKED, [this](wxHtmlLinkEvent& event) {
        // Not from within the page's own handler: the answer may change the page.
        const std::string link = event.GetLinkInfo().GetHref().utf8_string();
        parent_.CallAfter([this, link] { follow_(link); });
    });
}

void ToolTips::Show(const std::string& markup, const wxRect& control)
{
    const wxColour background = wxSystemSettings::GetColour(wxSYS_COLOUR_INFOBK);
    const wxColour ink = wxSystemSettings::GetColour(wxSYS_COLOUR_INFOTEXT);
    if (!popup_)
        MakePopup();
    const bool light = background.GetLuminance() > 0.5;
    page_->SetPage(wxString::FromUTF8(ToolTipPage(markup, Css(ink), Css(background), light ? "#1A5FB4" : "#99C1F1")));
    const wxSize size(kWidth, page_->GetInternalRepresentation()->GetHeight() + 2 * kMargin);
    page_->SetSize(size);
    popup_->SetClientSize(size);
    control_ = control;
    popup_->Move(PlaceFor(popup_->GetSize()));
    ticksAway_ = 0;
    watch_.Start(kWatch);
    showing_ = true;
    popup_->Show();
    ShareInput(*popup_);
    showing_ = false;
}

/// Beside the dialog at the height of the control, or else below or above the dialog; on a screen that has no room
/// there, below the control.
wxPoint ToolTips::PlaceFor(const wxSize& size) const
{
    const int screen = wxDisplay::GetFromWindow(&parent_);
    const wxRect area = wxDisplay(static_cast<unsigned>(screen == wxNOT_FOUND ? 0 : screen)).GetClientArea();
    const wxRect dialog = parent_.GetScreenRect();
    const int x = wxMax(area.x, wxMin(control_.x, area.GetRight() - size.x));
    const int y = wxMax(area.y, wxMin(control_.y, area.GetBottom() - size.y));
    const wxPoint places[] = {{dialog.GetRight() + kGap, y},
                              {dialog.x - size.x - kGap, y},
                              {x, dialog.GetBottom() + kGap},
                              {x, dialog.y - size.y - kGap}};
    for (const wxPoint& place : places) {
        if (area.Contains(wxRect(place, size)))
            return place;
    }
    return {x, wxMin(control_.GetBottom() + 1, area.GetBottom() - size.y)};
}

bool ToolTips::IsMouseOnTip() const
{
    return popup_ && popup_->IsShown() && popup_->GetScreenRect().Contains(wxGetMousePosition());
}

}  // namespace tessara
