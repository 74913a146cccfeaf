#pragma once

#include "app/viewer/window/pages/settings_listener.h"

#include <wx/notebook.h>

namespace tessara {

class ColorsPage;
class DebugPage;
class PicturePane;
class SculptPage;
class Viewer;
class ViewPage;

/// All settings, on pages by subject.
class SettingsBook final : public wxNotebook {
public:
    SettingsBook(wxWindow* parent, const SettingsListener& listener);

    /// How wide the book must be for all of its controls.
    int LeastWidth() const;

    /// Shows values, and what can be changed. \param hasSource whether there is a picture on the ground
    void ShowState(Viewer& viewer, const PicturePane& picture, bool hasSource);

    /// Shows what the last frame took.
    void ShowFigures(const Viewer& viewer, const PicturePane& picture);

    /// Another terrain is open. \param across length of its longer side in metres
    void SetTerrainSize(double across);

private:
    ViewPage* view_;
    ColorsPage* colors_;
    SculptPage* sculpt_;
    DebugPage* debug_;
};

}  // namespace tessara
