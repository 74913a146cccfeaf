#pragma once

#include "app/viewer/window/pages/settings_page.h"

class wxButton;
class wxChoice;

namespace tessara {

class Viewer;

/// The brush.
class SculptPage final : public SettingsPage {
public:
    SculptPage(wxWindow* parent, const SettingsListener& listener);
    void ShowState(Viewer& viewer, bool brushAtHand);

    /// \param across length of the terrain in metres
    void SetTerrainSize(double across);

private:
    wxChoice* brush_;
    wxButton* undo_;
    wxButton* redo_;
    wxButton* save_;
};

}  // namespace tessara
