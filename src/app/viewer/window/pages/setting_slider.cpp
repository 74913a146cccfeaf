#include "app/viewer/window/pages/setting_slider.h"

#include "app/viewer/window/pages/page_gap.h"
#include "app/viewer/window/window_text.h"

#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessara {

namespace {

/// A value that differs from the setting's mark by less than this share takes the mark.
constexpr double kReach = 0.03;

}  // namespace

SettingSlider::SettingSlider(wxWindow* parent, wxSizer& column, const Setting& setting,
                             std::function<void(double)> changed)
    : setting_(setting), low_(setting.low), high_(setting.high)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    title_ = new wxStaticText(parent, wxID_ANY, Wide(setting.label));
    text_ = new wxStaticText(parent, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                             wxALIGN_RIGHT | wxST_NO_AUTORESIZE);
    row->Add(title_, wxSizerFlags().CenterVertical());
    row->Add(text_, wxSizerFlags(1).CenterVertical().Border(wxLEFT, PageGap(parent)));
    column.Add(row, wxSizerFlags().Expand().Border(wxTOP, PageGap(parent)));
    slider_ = new wxSlider(parent, wxID_ANY, 0, 0, setting.steps);
    slider_->SetLineSize(std::max(setting.steps / 50, 1));
    slider_->SetPageSize(std::max(setting.steps / 10, 1));
    slider_->SetToolTip(Wide(setting.help));
    slider_->SetName(Wide(setting.label));
    column.Add(slider_, wxSizerFlags().Expand());
    slider_->Bind(wxEVT_SLIDER, [this, changed = std::move(changed)](wxCommandEvent& event) {
        const double value = ValueOf(event.GetInt());
        text_->SetLabel(Wide(setting_.text(value)));
        changed(value);
    });
}

double SettingSlider::ValueOf(int step) const
{
    const double share = static_cast<double>(step) / setting_.steps;
    const double value = setting_.logarithmic ? low_ * std::pow(high_ / low_, share) : low_ + (high_ - low_) * share;
    const bool marked = setting_.mark != 0.0 && std::fabs(value / setting_.mark - 1.0) < kReach;
    return marked ? setting_.mark : value;
}

int SettingSlider::StepOf(double value) const
{
    const double inside = std::clamp(value, low_, high_);
    const double share =
        setting_.logarithmic ? std::log(inside / low_) / std::log(high_ / low_) : (inside - low_) / (high_ - low_);
    return static_cast<int>(std::lround(share * setting_.steps));
}

void SettingSlider::Show(double value)
{
    if (slider_->GetValue() != StepOf(value))
        slider_->SetValue(StepOf(value));
    const wxString text = Wide(setting_.text(value));
    if (text_->GetLabel() != text)
        text_->SetLabel(text);
}

void SettingSlider::SetRange(double low, double high)
{
    low_ = low;
    high_ = high;
}

void SettingSlider::Enable(bool enabled)
{
    slider_->Enable(enabled);
    title_->Enable(enabled);
    text_->Enable(enabled);
}

}  // namespace tessara
