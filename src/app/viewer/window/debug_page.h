#pragma once

#include "app/viewer/window/setting_controls.h"
#include "app/viewer/window/settings_listener.h"

#include <vector>

class wxCheckBox;
class wxStaticText;

namespace tessara {

struct FrameFigures;

/// What developers look at.
class DebugPage final : public SettingsPage {
public:
    DebugPage(wxWindow* parent, const SettingsListener& listener);
    void Show(const ViewSettings& settings, const FrameFigures& figures, double framesPerSecond);

private:
    wxCheckBox* levels_;
    wxCheckBox* boxes_;
    wxCheckBox* freeze_;
    std::vector<wxStaticText*> figures_;
};

}  // namespace tessara
