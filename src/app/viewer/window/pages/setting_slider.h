#pragma once

#include "app/viewer/window/pages/setting_controls.h"

class wxSlider;
class wxStaticText;

namespace tessara {

/// A number that a slider sets, with a title and the value as text.
class SettingSlider final : public SettingControl {
public:
    /// \param setting outlives this object \param changed called with the value while somebody moves the slider
    SettingSlider(wxWindow* parent, wxSizer& column, const Setting& setting, std::function<void(double)> changed);

    /// Shows a value; one that the slider shows already isn't rounded.
    void Show(double value) override;
    void Enable(bool enabled) override;
    void SetRange(double low, double high) override;

private:
    double ValueOf(int step) const;
    int StepOf(double value) const;

    const Setting& setting_;
    double low_;
    double high_;
    wxSlider* slider_;
    wxStaticText* title_;
    wxStaticText* text_;
};

}  // namespace tessara
