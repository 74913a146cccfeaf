#include "app/viewer/window/debug_page.h"

#include "app/viewer/picture/terrain_view.h"
#include "app/viewer/picture/view_text.h"
#include "app/viewer/window/window_commands.h"
#include "app/viewer/window/window_text.h"
#include "platform/system/number_text.h"

#include <wx/checkbox.h>
#include <wx/stattext.h>

namespace tessara {

DebugPage::DebugPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent)
{
    AddHeading(this, Column(), "Detail of the terrain");
    levels_ = AddCheck(this, Column(), "Colours of the levels", "Colour triangles by the size of their nodes",
                       [run = listener.run](bool) { run(kLevelColors); });
    boxes_ = AddCheck(this, Column(), "Boxes of the drawn nodes", "Draw the boxes of the nodes that are drawn",
                      [run = listener.run](bool) { run(kNodeBoxes); });
    freeze_ = AddCheck(this, Column(), "Freeze the detail", "Keep the detail while the camera moves on",
                       [run = listener.run](bool) { run(kFreeze); });
    AddHeading(this, Column(), "Last frame");
    for (const char* title : {"Frames per second", "Triangles", "Active nodes", "Update", "Draw"}) {
        auto* row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(new wxStaticText(this, wxID_ANY, title), wxSizerFlags().CenterVertical());
        figures_.push_back(new wxStaticText(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                            wxALIGN_RIGHT | wxST_NO_AUTORESIZE));
        row->Add(figures_.back(), wxSizerFlags(1).CenterVertical());
        Column().Add(row, wxSizerFlags().Expand().Border(wxTOP, FromDIP(6)));
    }
    Finish();
}

void DebugPage::Show(const ViewSettings& settings, const FrameFigures& figures, double framesPerSecond)
{
    levels_->SetValue(settings.levelColors);
    boxes_->SetValue(settings.nodeBoxes);
    freeze_->SetValue(settings.frozen);
    const std::string texts[] = {FixedText(framesPerSecond, 0), CountText(figures.triangles),
                                 figures.activeNodes > 0 ? CountText(figures.activeNodes) : "–",
                                 FixedText(figures.update, 1) + " ms", FixedText(figures.draw, 1) + " ms"};
    for (std::size_t i = 0; i < figures_.size(); ++i)
        figures_[i]->SetLabel(Wide(texts[i]));
}

}  // namespace tessara
