#include "app/viewer/window/sculpt_page.h"

#include "app/viewer/picture/view_text.h"
#include "app/viewer/viewer.h"
#include "app/viewer/window/window_commands.h"
#include "platform/system/number_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>

#include <algorithm>

namespace tessara {

namespace {

std::string PercentText(double share)
{
    return FixedText(share * 100.0, 0) + " %";
}

}  // namespace

SculptPage::SculptPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent)
{
    AddHeading(this, Column(), "Brush");
    realTime_ = AddCheck(this, Column(), "Real-time mode", "Let the heights be changed",
                         [run = listener.run](bool) { run(kRealTime); });
    brush_ = AddChoice(this, Column(), "Brush", "What the left mouse button does",
                       {"None", "Raise", "Lower", "Smooth", "Flatten"},
                       [run = listener.run](int choice) { run(kBrushAway + choice); });
    radius_ = std::make_unique<SliderField>(
        this, Column(), "Radius", "How far the brush reaches", SliderField::Scale{10.0, 5000.0, true, 200, &LengthText},
        [change = listener.change](double value) {
            change([value](ViewSettings& settings) { settings.brush.radius = value; });
        });
    strength_ = std::make_unique<SliderField>(
        this, Column(), "Strength", "How quickly it works", SliderField::Scale{0.01, 1.0, false, 99, &PercentText},
        [change = listener.change](double value) {
            change([value](ViewSettings& settings) { settings.brush.strength = value; });
        });
    AddHeading(this, Column(), "Heights");
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    undo_ = AddButton(this, *row, "Undo", "Take the last stroke back", [run = listener.run] { run(kUndo); });
    redo_ = AddButton(this, *row, "Redo", "Repeat what was taken back", [run = listener.run] { run(kRedo); });
    Column().Add(row, wxSizerFlags().Expand());
    auto* second = new wxBoxSizer(wxHORIZONTAL);
    save_ = AddButton(this, *second, "Save Heights...", "Save the heights as a GeoTIFF",
                      [run = listener.run] { run(kSaveHeights); });
    Column().Add(second, wxSizerFlags().Expand());
    Finish();
}

void SculptPage::SetTerrainSize(double across)
{
    radius_->SetRange(std::max(across * 0.002, 0.01), std::max(across * 0.25, 0.1));
}

void SculptPage::Show(Viewer& viewer, bool brushAtHand)
{
    const ViewSettings& settings = viewer.Settings();
    realTime_->SetValue(settings.realTime);
    brush_->SetSelection(brushAtHand ? 1 + static_cast<int>(settings.brush.kind) : 0);
    radius_->Show(settings.brush.radius);
    strength_->Show(settings.brush.strength);
    undo_->Enable(viewer.HasTerrain() && viewer.Document().CanUndo());
    redo_->Enable(viewer.HasTerrain() && viewer.Document().CanRedo());
    save_->Enable(viewer.HasTerrain());
}

}  // namespace tessara
