#pragma once

#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <functional>
#include <string>
#include <vector>

class wxButton;
class wxCheckBox;
class wxChoice;
class wxSlider;
class wxStaticText;

namespace tessara {

/// A number that a slider sets, with a title and the value as text.
class SliderField {
public:
    /// How a value is spread over the slider, and written.
    struct Scale {
        double low;
        double high;
        bool logarithmic;  ///< equal ways multiply by equal factors
        int steps;         ///< of the slider from end to end
        std::function<std::string(double)> text;
    };

    /// \param changed called with the value while somebody moves the slider
    SliderField(wxWindow* parent, wxSizer& column, const std::string& title, const std::string& help, Scale scale,
                std::function<void(double)> changed);

    /// Shows a value; one that the slider shows already isn't rounded.
    void Show(double value);

    /// Spreads other values over the slider.
    void SetRange(double low, double high);

    void Enable(bool enabled);
    wxSlider& Slider() const noexcept { return *slider_; }

private:
    double ValueOf(int step) const;
    int StepOf(double value) const;

    Scale scale_;
    wxSlider* slider_;
    wxStaticText* title_;
    wxStaticText* text_;
};

/// A heading above a group of settings.
void AddHeading(wxWindow* parent, wxSizer& column, const std::string& title);

/// A setting that is on or off.
wxCheckBox* AddCheck(wxWindow* parent, wxSizer& column, const std::string& title, const std::string& help,
                     std::function<void(bool)> changed);

/// A setting that is one of a few, with a title to its left.
wxChoice* AddChoice(wxWindow* parent, wxSizer& column, const std::string& title, const std::string& help,
                    const std::vector<std::string>& choices, std::function<void(int)> changed);

/// A button, beside others in a row.
wxButton* AddButton(wxWindow* parent, wxSizer& row, const char* label, const char* help, std::function<void()> pressed);

/// A page of settings, which scrolls where it is too high for its place.
class SettingsPage : public wxScrolledWindow {
public:
    explicit SettingsPage(wxWindow* parent);

    /// Leaves the controls as they are where they have no room: the toolkit would complain.
    bool Layout() override;

    /// How wide the page must be for its controls, with a scroll bar.
    int LeastWidth() const;

protected:
    /// Where controls go, one below the other.
    wxBoxSizer& Column() noexcept { return *column_; }

    /// All controls are there.
    void Finish();

private:
    wxBoxSizer* column_;
};

}  // namespace tessara
