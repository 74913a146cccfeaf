#include "app/viewer/window/pages/colors_page.h"

#include "app/viewer/viewer.h"
#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/pages/page_gap.h"
#include "app/viewer/window/window_text.h"

#include <wx/stattext.h>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr double kHighest = 1e6;  // metres: no height of a file is beyond

}  // namespace

ColorsPage::ColorsPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent, listener)
{
    AddGroup("Colours of the heights", SettingGroup::HeightColors);
    AddLimits();
    auto* reset = new wxBoxSizer(wxHORIZONTAL);
    AddButton(this, *reset, "All Heights", "From the lowest to the highest point of the terrain", [this] {
        low_->Forget();
        high_->Forget();
        Refuse({});
        Listener().resetColors();
    });
    Column().Add(reset, wxSizerFlags().Expand());
    AddGroup("Sea", SettingGroup::Sea);
    AddGroup("Picture on the ground", SettingGroup::GroundPicture);
    auto* pictures = new wxBoxSizer(wxHORIZONTAL);
    AddButton(this, *pictures, "Import...", "Stretch a picture over the terrain",
              [run = listener.run] { run(kImportSource); });
    AddButton(this, *pictures, "Detail...", "Choose and tune the detail texture",
              [run = listener.run] { run(kTerrainDetail); });
    Column().Add(pictures, wxSizerFlags().Expand());
    Finish();
}

void ColorsPage::AddLimits()
{
    const auto add = [this](const char* title, const char* help) {
        return std::make_unique<NumberField>(
            this, Column(), NumberField::Look{title, help, "m", -kHighest, kHighest, 1}, [this] { TakeLimits(); });
    };
    low_ = add("From", "Height in metres that gets the first colour");
    high_ = add("To", "Height in metres that gets the last colour");
    refusal_ = new wxStaticText(this, wxID_ANY, wxEmptyString);
    refusal_->SetForegroundColour(wxColour(0xC0, 0x1C, 0x28));
    refusal_->SetName("Refusal");
    Column().Add(refusal_, wxSizerFlags().Expand().Border(wxTOP, PageGap(this)));
    refusal_->Hide();
}

void ColorsPage::TakeLimits()
{
    std::string reason;
    const auto high = high_->Read(reason);
    const auto low = low_->Read(reason);
    if (low && high && *low >= *high) {
        reason = "From must lie below To.";
        low_->SetRefused(low_->IsChanged());
        high_->SetRefused(high_->IsChanged());
    }
    const bool changed = low_->IsChanged() || high_->IsChanged();
    Refuse(changed ? reason : std::string());
    if (!changed || !reason.empty())
        return;
    low_->Forget();
    high_->Forget();
    Listener().colors(*low, *high);
}

/// Shows why the limits aren't taken; an empty reason when they are.
void ColorsPage::Refuse(const std::string& reason)
{
    if (refusal_->GetLabel() == Wide(reason))
        return;
    const int width = GetClientSize().x - 4 * PageGap(this);
    refusal_->SetLabel(Wide(reason));
    refusal_->Wrap(width);
    refusal_->Show(!reason.empty());
    SetVirtualSize(GetSizer()->GetMinSize());
    Layout();
}

void ColorsPage::ShowState(const Viewer& viewer, bool hasSource)
{
    if (viewer.HasTerrain()) {
        const ElevationData& data = viewer.Document().Data();
        ControlOf("Sea/Level")
            .SetRange(std::min(std::floor(static_cast<double>(data.minimum)), 0.0),
                      std::max(std::ceil(static_cast<double>(data.maximum)), 1.0));
    }
    ControlOf("Sea/Level").Enable(viewer.Settings().sea != SeaMode::Hidden);
    Show(viewer.Settings());
    low_->Show(viewer.Colors().low);
    high_->Show(viewer.Colors().high);
    ControlOf("View/SourceTexture").Enable(hasSource);
}

}  // namespace tessara
