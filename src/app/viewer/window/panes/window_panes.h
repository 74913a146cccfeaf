#pragma once

#include "app/viewer/window/pages/settings_listener.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/work/kept_settings.h"

#include <wx/panel.h>

namespace tessara {

class LegendPane;
class LoadBar;
class MapPane;
class NoteBar;
class PaneSplitter;
class SettingsBook;

/// Everything in the window between menus and status bar: notes, the terrain in space, beside it the settings and the
/// map with its legend, and a bar for long work.
class WindowPanes final : public wxPanel {
public:
    WindowPanes(wxWindow* parent, PicturePane::Listener picture, const SettingsListener& settings);

    /// Shows the panes as they were the last time.
    void Arrange(const WindowPlace& place);

    /// Fills in how the panes are arranged.
    void Keep(WindowPlace& place) const;

    void SetMapShown(bool shown);
    bool IsMapShown() const noexcept { return mapShown_; }
    void SetSideShown(bool shown);
    bool IsSideShown() const noexcept { return sideShown_; }

    PicturePane& Picture() const noexcept { return *picture_; }
    MapPane& Map() const noexcept { return *map_; }
    LegendPane& Legend() const noexcept { return *legend_; }
    SettingsBook& Settings() const noexcept { return *settings_; }
    NoteBar& Notes() const noexcept { return *notes_; }
    LoadBar& Progress() const noexcept { return *progress_; }

private:
    NoteBar* notes_;
    PaneSplitter* whole_;
    PaneSplitter* side_;
    LoadBar* progress_;
    PicturePane* picture_;
    SettingsBook* settings_;
    wxPanel* mapPanel_;
    MapPane* map_;
    LegendPane* legend_;
    bool sideShown_ = true;
    bool mapShown_ = true;
};

}  // namespace tessara
