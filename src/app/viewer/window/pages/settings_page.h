#pragma once

#include "app/viewer/window/pages/setting_controls.h"
#include "app/viewer/window/pages/settings_listener.h"

#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessara {

/// A page of settings, which scrolls where it is too high for its place.
class SettingsPage : public wxScrolledWindow {
public:
    SettingsPage(wxWindow* parent, SettingsListener listener);

    /// Shows the values of all settings on the page.
    void Show(const ViewSettings& settings);
    using wxScrolledWindow::Show;

    /// Leaves the controls as they are where they have no room: the toolkit would complain.
    bool Layout() override;

    /// How wide the page must be for its controls, with a scroll bar.
    int LeastWidth() const;

protected:
    /// Where controls go, one below the other.
    wxBoxSizer& Column() noexcept { return *column_; }
    const SettingsListener& Listener() const noexcept { return listener_; }

    /// A heading, and all settings of the group.
    void AddGroup(const std::string& title, SettingGroup group);

    /// The control of a setting on this page. \param name of the setting
    SettingControl& ControlOf(std::string_view name) const;

    /// All controls are there.
    void Finish();

private:
    SettingsListener listener_;
    wxBoxSizer* column_;
    std::vector<std::pair<const Setting*, std::unique_ptr<SettingControl>>> controls_;
};

}  // namespace tessara
