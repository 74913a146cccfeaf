#include "app/viewer/window/pages/settings_book.h"

#include "app/viewer/viewer.h"
#include "app/viewer/window/pages/colors_page.h"
#include "app/viewer/window/pages/debug_page.h"
#include "app/viewer/window/pages/sculpt_page.h"
#include "app/viewer/window/pages/view_page.h"
#include "app/viewer/window/panes/picture_pane.h"

#include <algorithm>

namespace tessara {

SettingsBook::SettingsBook(wxWindow* parent, const SettingsListener& listener)
    : wxNotebook(parent, wxID_ANY),
      view_(new ViewPage(this, listener)),
      colors_(new ColorsPage(this, listener)),
      sculpt_(new SculptPage(this, listener)),
      debug_(new DebugPage(this, listener))
{
    AddPage(view_, "View");
    AddPage(colors_, "Colours");
    AddPage(sculpt_, "Sculpt");
    AddPage(debug_, "Debug");
}

int SettingsBook::LeastWidth() const
{
    int least = 0;
    for (const SettingsPage* page : {static_cast<SettingsPage*>(view_), static_cast<SettingsPage*>(colors_),
                                     static_cast<SettingsPage*>(sculpt_), static_cast<SettingsPage*>(debug_)})
        least = std::max(least, page->LeastWidth());
    return least;
}

void SettingsBook::ShowState(Viewer& viewer, const PicturePane& picture, bool hasSource)
{
    view_->Show(viewer.Settings());
    colors_->ShowState(viewer, hasSource);
    sculpt_->ShowState(viewer, picture.HasBrush());
    debug_->ShowState(viewer.Settings(), picture.Figures(), picture.FramesPerSecond());
}

void SettingsBook::ShowFigures(const Viewer& viewer, const PicturePane& picture)
{
    if (debug_->IsShownOnScreen())
        debug_->ShowState(viewer.Settings(), picture.Figures(), picture.FramesPerSecond());
}

void SettingsBook::SetTerrainSize(double across)
{
    sculpt_->SetTerrainSize(across);
}

}  // namespace tessara
