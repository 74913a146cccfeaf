#include "app/viewer/window/pages/debug_page.h"

#include "app/viewer/picture/terrain_view.h"
#include "app/viewer/picture/view_text.h"
#include "app/viewer/window/window_text.h"
#include "platform/system/number_text.h"

#include <wx/stattext.h>

namespace tessara {

DebugPage::DebugPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent, listener)
{
    AddGroup("Detail of the terrain", SettingGroup::Detail);
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

void DebugPage::ShowState(const ViewSettings& settings, const FrameFigures& figures, double framesPerSecond)
{
    Show(settings);
    const std::string texts[] = {FixedText(framesPerSecond, 0), CountText(figures.triangles),
                                 figures.activeNodes > 0 ? CountText(figures.activeNodes) : "–",
                                 FixedText(figures.update, 1) + " ms", FixedText(figures.draw, 1) + " ms"};
    for (std::size_t i = 0; i < figures_.size(); ++i)
        figures_[i]->SetLabel(Wide(texts[i]));
}

}  // namespace tessara
