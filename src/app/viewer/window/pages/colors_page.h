#pragma once

#include "app/viewer/window/pages/settings_page.h"

class wxTextCtrl;

namespace tessara {

class Viewer;

/// Colours of the heights, and pictures on the ground.
class ColorsPage final : public SettingsPage {
public:
    ColorsPage(wxWindow* parent, const SettingsListener& listener);
    void ShowState(const Viewer& viewer, bool hasSource);

private:
    wxTextCtrl* AddHeight(const std::string& title, const std::string& help);

    wxTextCtrl* low_;
    wxTextCtrl* high_;
};

}  // namespace tessara
