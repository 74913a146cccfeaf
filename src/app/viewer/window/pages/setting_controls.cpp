#include "app/viewer/window/pages/setting_controls.h"

#include "app/viewer/window/pages/page_gap.h"
#include "app/viewer/window/pages/setting_slider.h"
#include "app/viewer/window/window_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <utility>

namespace tessara {

namespace {

class SettingCheck final : public SettingControl {
public:
    SettingCheck(wxWindow* parent, wxSizer& column, const Setting& setting, std::function<void(double)> changed)
        : box_(new wxCheckBox(parent, wxID_ANY, Wide(setting.label)))
    {
        box_->SetToolTip(Wide(setting.help));
        box_->Bind(wxEVT_CHECKBOX,
                   [changed = std::move(changed)](wxCommandEvent& event) { changed(event.IsChecked() ? 1.0 : 0.0); });
        column.Add(box_, wxSizerFlags().Expand().Border(wxTOP, PageGap(parent)));
    }

    void Show(double value) override { box_->SetValue(value != 0.0); }
    void Enable(bool enabled) override { box_->Enable(enabled); }

private:
    wxCheckBox* box_;
};

class SettingChoice final : public SettingControl {
public:
    SettingChoice(wxWindow* parent, wxSizer& column, const Setting& setting, std::function<void(double)> changed)
    {
        std::vector<std::string> labels;
        for (const Setting::Option& each : setting.options)
            labels.push_back(each.label);
        choice_ = AddChoice(parent, column, setting.label, setting.help, labels,
                            [changed = std::move(changed)](int index) { changed(index); });
    }

    void Show(double value) override { choice_->SetSelection(static_cast<int>(value)); }
    void Enable(bool enabled) override { choice_->Enable(enabled); }

private:
    wxChoice* choice_;
};

}  // namespace

std::unique_ptr<SettingControl> AddControl(wxWindow* parent, wxSizer& column, const Setting& setting,
                                           std::function<void(double)> changed)
{
    switch (setting.kind) {
    case Setting::Kind::Number:
        return std::make_unique<SettingSlider>(parent, column, setting, std::move(changed));
    case Setting::Kind::Switch:
        return std::make_unique<SettingCheck>(parent, column, setting, std::move(changed));
    case Setting::Kind::Choice:
        break;
    }
    return std::make_unique<SettingChoice>(parent, column, setting, std::move(changed));
}

void AddHeading(wxWindow* parent, wxSizer& column, const std::string& title)
{
    auto* text = new wxStaticText(parent, wxID_ANY, Wide(title));
    text->SetFont(text->GetFont().Bold());
    column.Add(text, wxSizerFlags().Expand().Border(wxTOP, column.IsEmpty() ? 0 : PageGap(parent, 2)));
}

wxChoice* AddChoice(wxWindow* parent, wxSizer& column, const std::string& title, const std::string& help,
                    const std::vector<std::string>& choices, std::function<void(int)> changed)
{
    wxArrayString texts;
    for (const std::string& each : choices)
        texts.Add(Wide(each));
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(parent, wxID_ANY, Wide(title)), wxSizerFlags().CenterVertical());
    auto* choice = new wxChoice(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, texts);
    choice->SetToolTip(Wide(help));
    choice->SetName(Wide(title));
    choice->Bind(wxEVT_CHOICE, [changed = std::move(changed)](wxCommandEvent& event) { changed(event.GetInt()); });
    row->AddStretchSpacer();
    row->Add(choice, wxSizerFlags(2).CenterVertical().Border(wxLEFT, PageGap(parent)));
    column.Add(row, wxSizerFlags().Expand().Border(wxTOP, PageGap(parent)));
    return choice;
}

wxButton* AddButton(wxWindow* parent, wxSizer& row, const char* label, const char* help, std::function<void()> pressed)
{
    auto* button = new wxButton(parent, wxID_ANY, label);
    button->SetToolTip(help);
    button->Bind(wxEVT_BUTTON, [pressed = std::move(pressed)](wxCommandEvent&) { pressed(); });
    row.Add(button, wxSizerFlags(1).Border(wxTOP, PageGap(parent)));
    return button;
}

}  // namespace tessara
