#pragma once

#include <wx/panel.h>

#include <functional>
#include <string>

class wxButton;
class wxGauge;
class wxStaticText;

namespace tessara {

/// A bar at the lower edge of the window that tells about long work. Hidden where there is none.
class LoadBar final : public wxPanel {
public:
    explicit LoadBar(wxWindow* parent);

    /// \param cancel called once when the user doesn't want to wait; empty where that isn't possible
    void Begin(const std::string& title, std::function<void()> cancel);

    /// \param fraction 0 to 1
    void Step(double fraction);

    void End();

    /// Leaves the controls as they are where they have no room: the toolkit would complain.
    bool Layout() override;

private:
    wxStaticText* title_;
    wxGauge* gauge_;
    wxButton* button_;
    std::function<void()> cancel_;
};

}  // namespace tessara
