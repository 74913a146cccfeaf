#pragma once

#include "app/viewer/window/pages/number_field.h"
#include "app/viewer/window/pages/settings_page.h"

#include <memory>
#include <string>

class wxStaticText;

namespace tessara {

class Viewer;

/// Colours of the heights, and pictures on the ground.
class ColorsPage final : public SettingsPage {
public:
    ColorsPage(wxWindow* parent, const SettingsListener& listener);
    void ShowState(const Viewer& viewer, bool hasSource);

private:
    void AddLimits();
    void TakeLimits();
    void Refuse(const std::string& reason);

    std::unique_ptr<NumberField> low_;
    std::unique_ptr<NumberField> high_;
    wxStaticText* refusal_ = nullptr;  // why the limits aren't taken
};

}  // namespace tessara
