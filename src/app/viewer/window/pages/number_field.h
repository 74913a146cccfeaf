#pragma once

#include <wx/gdicmn.h>

#include <functional>
#include <optional>
#include <string>

class wxSizer;
class wxTextCtrl;
class wxWindow;

namespace tessara {

/// A number that is typed into a field. What is no number stays there until it is corrected or given up with Esc.
class NumberField {
public:
    struct Look {
        std::string title;
        std::string help;
        std::string unit;
        double low;  ///< the least and the greatest that are taken
        double high;
        int digits;  ///< after the point
    };

    /// \param finished somebody has finished typing, or given it up
    NumberField(wxWindow* parent, wxSizer& column, Look look, std::function<void()> finished);

    /// Shows a value, unless somebody is typing.
    void Show(double value);

    /// Whether something was typed that hasn't been taken.
    bool IsChanged() const;

    /// The number in the field. Marks the field where there is none. \return nothing there, with the reason
    std::optional<double> Read(std::string& reason);

    /// Marks the field as refused, or not.
    void SetRefused(bool refused);

    /// What was typed is taken, or given up.
    void Forget();

private:
    Look look_;
    wxTextCtrl* field_;
    double shown_ = 0.0;
};

}  // namespace tessara
