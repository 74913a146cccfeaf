#include "app/viewer/window/pages/settings_page.h"

#include "app/viewer/window/pages/page_gap.h"

#include <wx/settings.h>

#include <algorithm>

namespace tessara {

SettingsPage::SettingsPage(wxWindow* parent, SettingsListener listener)
    : wxScrolledWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxVSCROLL | wxTAB_TRAVERSAL),
      listener_(std::move(listener)),
      column_(new wxBoxSizer(wxVERTICAL))
{
}

void SettingsPage::AddGroup(const std::string& title, SettingGroup group)
{
    AddHeading(this, *column_, title);
    for (const Setting& setting : AllSettings()) {
        if (setting.group != group)
            continue;
        controls_.emplace_back(&setting, AddControl(this, *column_, setting, [this, &setting](double value) {
            listener_.change([&](ViewSettings& settings) { setting.set(settings, value); });
        }));
    }
}

SettingControl& SettingsPage::ControlOf(std::string_view name) const
{
    return *std::ranges::find_if(controls_, [name](const auto& each) { return each.first->name == name; })->second;
}

void SettingsPage::Show(const ViewSettings& settings)
{
    for (const auto& [setting, control] : controls_)
        control->Show(setting->get(settings));
}

bool SettingsPage::Layout()
{
    return !GetSizer() || GetClientSize().x < GetSizer()->GetMinSize().x || wxScrolledWindow::Layout();
}

int SettingsPage::LeastWidth() const
{
    return GetSizer()->GetMinSize().x + wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this) + PageGap(this);
}

void SettingsPage::Finish()
{
    auto* frame = new wxBoxSizer(wxVERTICAL);
    frame->Add(column_, wxSizerFlags(1).Expand().Border(wxALL, PageGap(this, 2)));
    SetSizer(frame);
    SetScrollRate(0, FromDIP(12));
    SetVirtualSize(frame->GetMinSize());
}

}  // namespace tessara
