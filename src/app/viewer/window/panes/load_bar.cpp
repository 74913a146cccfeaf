#include "app/viewer/window/panes/load_bar.h"

#include "app/viewer/window/window_text.h"

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <cmath>
#include <utility>

namespace tessara {

namespace {

constexpr int kSteps = 200;

}  // namespace

LoadBar::LoadBar(wxWindow* parent) : wxPanel(parent)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    title_ = new wxStaticText(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                              wxST_ELLIPSIZE_MIDDLE | wxST_NO_AUTORESIZE);
    gauge_ = new wxGauge(this, wxID_ANY, kSteps, wxDefaultPosition, FromDIP(wxSize(180, -1)));
    button_ = new wxButton(this, wxID_CANCEL, "Cancel");
    row->Add(title_, wxSizerFlags(1).CenterVertical().Border(wxALL, FromDIP(6)));
    row->Add(gauge_, wxSizerFlags(1).CenterVertical().Border(wxALL, FromDIP(6)));
    row->Add(button_, wxSizerFlags().CenterVertical().Border(wxALL, FromDIP(4)));
    SetSizer(row);
    button_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        if (const auto cancel = std::exchange(cancel_, nullptr)) {
            button_->Disable();
            cancel();
        }
    });
    Hide();
}

void LoadBar::Begin(const std::string& title, std::function<void()> cancel)
{
    title_->SetLabel(Wide(title));
    gauge_->SetValue(0);
    cancel_ = std::move(cancel);
    button_->Show(static_cast<bool>(cancel_));
    button_->Enable();
    Show();
    GetParent()->Layout();
    Layout();
}

bool LoadBar::Layout()
{
    const bool fits = GetSizer() && GetClientSize().y >= GetSizer()->GetMinSize().y;
    return !fits || wxPanel::Layout();
}

void LoadBar::Step(double fraction)
{
    const int value = static_cast<int>(std::lround(fraction * kSteps));
    if (gauge_->GetValue() != value)
        gauge_->SetValue(value);
}

void LoadBar::End()
{
    if (!IsShown())
        return;
    cancel_ = nullptr;
    Hide();
    GetParent()->Layout();
}

}  // namespace tessara
