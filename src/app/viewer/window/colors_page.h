#pragma once

#include "app/viewer/window/setting_controls.h"
#include "app/viewer/window/settings_listener.h"

#include <memory>

class wxCheckBox;
class wxChoice;
class wxTextCtrl;

namespace tessara {

class Viewer;

/// Colours of the heights, and pictures on the ground.
class ColorsPage final : public SettingsPage {
public:
    ColorsPage(wxWindow* parent, const SettingsListener& listener);
    void Show(const Viewer& viewer, bool hasSource);

private:
    wxTextCtrl* AddHeight(const std::string& title, const std::string& help);

    wxCheckBox* colors_;
    wxChoice* ramp_;
    wxTextCtrl* low_;
    wxTextCtrl* high_;
    wxCheckBox* source_;
};

}  // namespace tessara
