#pragma once

#include "app/viewer/work/setting_table.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxButton;
class wxCheckBox;
class wxChoice;
class wxSizer;
class wxWindow;

namespace tessara {

/// Shows a setting, and tells when somebody gives it another value.
class SettingControl {
public:
    virtual ~SettingControl() = default;

    virtual void Show(double value) = 0;
    virtual void Enable(bool enabled) = 0;

    /// Other limits of a number.
    virtual void SetRange(double, double) {}
};

/// The control that suits a setting, below others. \param setting outlives the control
std::unique_ptr<SettingControl> AddControl(wxWindow* parent, wxSizer& column, const Setting& setting,
                                           std::function<void(double)> changed);

/// A heading above a group of settings.
void AddHeading(wxWindow* parent, wxSizer& column, const std::string& title);

/// One of a few, with a title to its left.
wxChoice* AddChoice(wxWindow* parent, wxSizer& column, const std::string& title, const std::string& help,
                    const std::vector<std::string>& choices, std::function<void(int)> changed);

/// A button, beside others in a row.
wxButton* AddButton(wxWindow* parent, wxSizer& row, const char* label, const char* help, std::function<void()> pressed);

}  // namespace tessara
