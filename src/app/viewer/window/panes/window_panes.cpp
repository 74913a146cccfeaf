#include "app/viewer/window/panes/window_panes.h"

#include "app/viewer/window/pages/settings_book.h"
#include "app/viewer/window/panes/legend_pane.h"
#include "app/viewer/window/panes/load_bar.h"
#include "app/viewer/window/panes/map_pane.h"
#include "app/viewer/window/panes/note_bar.h"
#include "app/viewer/window/panes/pane_splitter.h"

#include <wx/sizer.h>

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

constexpr int kLeastSide = 250;
constexpr int kLeastMap = 110;

/// A small window keeps room for the terrain and for the settings.
constexpr double kMostSide = 0.4;
constexpr double kMostMap = 0.42;

}  // namespace

WindowPanes::WindowPanes(wxWindow* parent, PicturePane::Listener picture, const SettingsListener& settings)
    : wxPanel(parent),
      notes_(new NoteBar(this)),
      whole_(new PaneSplitter(this, kMostSide)),
      side_(new PaneSplitter(whole_, kMostMap)),
      progress_(new LoadBar(this)),
      picture_(new PicturePane(whole_, std::move(picture))),
      settings_(new SettingsBook(side_, settings)),
      mapPanel_(new wxPanel(side_)),
      map_(new MapPane(mapPanel_)),
      legend_(new LegendPane(mapPanel_))
{
    auto* mapColumn = new wxBoxSizer(wxVERTICAL);
    mapColumn->Add(map_, wxSizerFlags(1).Expand());
    mapColumn->Add(legend_, wxSizerFlags().Expand());
    mapPanel_->SetSizer(mapColumn);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(notes_, wxSizerFlags().Expand());
    column->Add(whole_, wxSizerFlags(1).Expand());
    column->Add(progress_, wxSizerFlags().Expand());
    SetSizer(column);
}

void WindowPanes::Arrange(const WindowPlace& place)
{
    whole_->SetMinimumPaneSize(std::max(FromDIP(kLeastSide), settings_->LeastWidth()));
    side_->SetMinimumPaneSize(FromDIP(kLeastMap));
    whole_->Show(wxSPLIT_VERTICAL, picture_, side_, place.sideWidth);
    side_->Show(wxSPLIT_HORIZONTAL, settings_, mapPanel_, place.mapHeight);
    SetMapShown(place.mapShown);
    SetSideShown(place.sideShown);
}

void WindowPanes::Keep(WindowPlace& place) const
{
    place.sideWidth = whole_->SecondSize();
    place.mapHeight = side_->SecondSize();
    place.sideShown = sideShown_;
    place.mapShown = mapShown_;
}

void WindowPanes::SetMapShown(bool shown)
{
    mapShown_ = shown;
    if (shown == side_->IsSplit())
        return;
    if (shown)
        side_->Show(wxSPLIT_HORIZONTAL, settings_, mapPanel_, side_->SecondSize());
    else
        side_->Unsplit(mapPanel_);
}

void WindowPanes::SetSideShown(bool shown)
{
    sideShown_ = shown;
    if (shown == whole_->IsSplit())
        return;
    if (shown)
        whole_->Show(wxSPLIT_VERTICAL, picture_, side_, whole_->SecondSize());
    else
        whole_->Unsplit(side_);
}

}  // namespace tessara
