#pragma once

#include "app/viewer/window/pages/settings_page.h"

#include <vector>

class wxStaticText;

namespace tessara {

struct FrameFigures;

/// What developers look at.
class DebugPage final : public SettingsPage {
public:
    DebugPage(wxWindow* parent, const SettingsListener& listener);
    void ShowState(const ViewSettings& settings, const FrameFigures& figures, double framesPerSecond);

private:
    std::vector<wxStaticText*> figures_;
};

}  // namespace tessara
