#include "app/viewer/window/pages/sculpt_page.h"

#include "app/viewer/viewer.h"
#include "app/viewer/window/commands/command.h"

#include <wx/button.h>
#include <wx/choice.h>

namespace tessara {

SculptPage::SculptPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent, listener)
{
    AddGroup("Brush", SettingGroup::Brush);
    brush_ = AddChoice(this, Column(), "Brush", "What the left mouse button does",
                       {"None", "Raise", "Lower", "Smooth", "Flatten"},
                       [run = listener.run](int choice) { run(kBrushAway + choice); });
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
    const BrushRadii radii(across);
    ControlOf("Sculpt/Radius").SetRange(radii.low, radii.high);
}

void SculptPage::ShowState(Viewer& viewer, bool brushAtHand)
{
    Show(viewer.Settings());
    brush_->SetSelection(brushAtHand ? 1 + static_cast<int>(viewer.Settings().brush.kind) : 0);
    undo_->Enable(viewer.HasTerrain() && viewer.Sculptor().CanUndo());
    redo_->Enable(viewer.HasTerrain() && viewer.Sculptor().CanRedo());
    save_->Enable(viewer.HasTerrain());
}

}  // namespace tessara
