#include "app/viewer/window/setting_controls.h"

#include "app/viewer/window/window_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/settings.h>
#include <wx/slider.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessara {

namespace {

constexpr int kGap = 6;

int Gap(const wxWindow* window, int count = 1)
{
    return window->FromDIP(kGap * count);
}

}  // namespace

SliderField::SliderField(wxWindow* parent, wxSizer& column, const std::string& title, const std::string& help,
                         Scale scale, std::function<void(double)> changed)
    : scale_(std::move(scale))
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    title_ = new wxStaticText(parent, wxID_ANY, Wide(title));
    text_ = new wxStaticText(parent, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                             wxALIGN_RIGHT | wxST_NO_AUTORESIZE);
    row->Add(title_, wxSizerFlags().CenterVertical());
    row->Add(text_, wxSizerFlags(1).CenterVertical().Border(wxLEFT, Gap(parent)));
    column.Add(row, wxSizerFlags().Expand().Border(wxTOP, Gap(parent)));
    slider_ = new wxSlider(parent, wxID_ANY, 0, 0, scale_.steps);
    slider_->SetLineSize(std::max(scale_.steps / 50, 1));
    slider_->SetPageSize(std::max(scale_.steps / 10, 1));
    slider_->SetToolTip(Wide(help));
    slider_->SetName(Wide(title));
    column.Add(slider_, wxSizerFlags().Expand());
    slider_->Bind(wxEVT_SLIDER, [this, changed = std::move(changed)](wxCommandEvent& event) {
        const double value = ValueOf(event.GetInt());
        text_->SetLabel(Wide(scale_.text(value)));
        changed(value);
    });
}

double SliderField::ValueOf(int step) const
{
    const double share = static_cast<double>(step) / scale_.steps;
    return scale_.logarithmic ? scale_.low * std::pow(scale_.high / scale_.low, share)
                              : scale_.low + (scale_.high - scale_.low) * share;
}

int SliderField::StepOf(double value) const
{
    const double inside = std::clamp(value, scale_.low, scale_.high);
    const double share = scale_.logarithmic ? std::log(inside / scale_.low) / std::log(scale_.high / scale_.low)
                                            : (inside - scale_.low) / (scale_.high - scale_.low);
    return static_cast<int>(std::lround(share * scale_.steps));
}

void SliderField::Show(double value)
{
    if (slider_->GetValue() != StepOf(value))
        slider_->SetValue(StepOf(value));
    const wxString text = Wide(scale_.text(value));
    if (text_->GetLabel() != text)
        text_->SetLabel(text);
}

void SliderField::SetRange(double low, double high)
{
    scale_.low = low;
    scale_.high = high;
}

void SliderField::Enable(bool enabled)
{
    for (wxWindow* each :
         {static_cast<wxWindow*>(slider_), static_cast<wxWindow*>(title_), static_cast<wxWindow*>(text_)})
        each->Enable(enabled);
}

void AddHeading(wxWindow* parent, wxSizer& column, const std::string& title)
{
    auto* text = new wxStaticText(parent, wxID_ANY, Wide(title));
    text->SetFont(text->GetFont().Bold());
    column.Add(text, wxSizerFlags().Expand().Border(wxTOP, column.IsEmpty() ? 0 : Gap(parent, 2)));
}

wxCheckBox* AddCheck(wxWindow* parent, wxSizer& column, const std::string& title, const std::string& help,
                     std::function<void(bool)> changed)
{
    auto* box = new wxCheckBox(parent, wxID_ANY, Wide(title));
    box->SetToolTip(Wide(help));
    box->Bind(wxEVT_CHECKBOX, [changed = std::move(changed)](wxCommandEvent& event) { changed(event.IsChecked()); });
    column.Add(box, wxSizerFlags().Expand().Border(wxTOP, Gap(parent)));
    return box;
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
    row->Add(choice, wxSizerFlags(2).CenterVertical().Border(wxLEFT, Gap(parent)));
    column.Add(row, wxSizerFlags().Expand().Border(wxTOP, Gap(parent)));
    return choice;
}

wxButton* AddButton(wxWindow* parent, wxSizer& row, const char* label, const char* help, std::function<void()> pressed)
{
    auto* button = new wxButton(parent, wxID_ANY, label);
    button->SetToolTip(help);
    button->Bind(wxEVT_BUTTON, [pressed = std::move(pressed)](wxCommandEvent&) { pressed(); });
    row.Add(button, wxSizerFlags(1).Border(wxTOP, Gap(parent)));
    return button;
}

SettingsPage::SettingsPage(wxWindow* parent)
    : wxScrolledWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxVSCROLL | wxTAB_TRAVERSAL),
      column_(new wxBoxSizer(wxVERTICAL))
{
}

bool SettingsPage::Layout()
{
    return !GetSizer() || GetClientSize().x < GetSizer()->GetMinSize().x || wxScrolledWindow::Layout();
}

int SettingsPage::LeastWidth() const
{
    return GetSizer()->GetMinSize().x + wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this) + FromDIP(kGap);
}

void SettingsPage::Finish()
{
    auto* frame = new wxBoxSizer(wxVERTICAL);
    frame->Add(column_, wxSizerFlags(1).Expand().Border(wxALL, Gap(this, 2)));
    SetSizer(frame);
    SetScrollRate(0, FromDIP(12));
    SetVirtualSize(frame->GetMinSize());
}

}  // namespace tessara
