#pragma once

#include <wx/html/htmlwin.h>
#include <wx/popupwin.h>
#include <wx/timer.h>

#include <functional>
#include <map>
#include <string>

namespace tessara {

/// Tooltips with headings, lines and links for the controls of one dialog. One is shown after the mouse has rested on
/// its control, beside the dialog, where it covers nothing that could be clicked. It goes when the mouse has been away
/// from control and tooltip for a moment, which is long enough to reach its links. Who uses the dialog isn't disturbed:
/// the tooltip stays away until the mouse comes to another control.
class ToolTips final : public wxEvtHandler {
public:
    /// \param parent the dialog \param follow hears the text of a link that was clicked
    ToolTips(wxWindow& parent, std::function<void(const std::string&)> follow);
    ~ToolTips() override;

    void Add(wxWindow& control, const std::string& markup) { texts_[&control] = markup; }

    /// The mouse moved. \param over the control that it is on now, or null
    void MouseOver(wxWindow* over);

    /// Something was done in the dialog, with the mouse or otherwise.
    void DialogUsed();

    /// Shows a text where the last tooltip stood, or at the height of the mouse.
    void ShowHelp(const std::string& markup);

    void Hide();

private:
    static void InputMoved(void* widget, int comesBack, ToolTips* self);
    void OnRested();
    void OnWatch();
    void MakePopup();
    void Show(const std::string& markup, const wxRect& control);
    wxPoint PlaceFor(const wxSize& size) const;
    bool IsMouseOnTip() const;

    wxWindow& parent_;
    std::function<void(const std::string&)> follow_;
    std::map<wxWindow*, std::string> texts_;
    wxPopupWindow* popup_ = nullptr;  // a child of the dialog, made when first needed
    wxHtmlWindow* page_ = nullptr;
    wxTimer rested_;
    wxTimer watch_;             // runs while a tooltip is shown
    int ticksAway_ = 0;         // of the watch, since the mouse left control and tooltip
    wxWindow* over_ = nullptr;  // what the mouse is on
    bool used_ = false;         // the dialog was used since the mouse came there
    bool showing_ = false;
    wxRect control_;  // on the screen, that the last tooltip was shown for
};

}  // namespace tessara
