#pragma once

#include "app/viewer/window/setting_controls.h"
#include "app/viewer/window/settings_listener.h"

#include <memory>

class wxButton;
class wxCheckBox;
class wxChoice;

namespace tessara {

class Viewer;

/// The brush.
class SculptPage final : public SettingsPage {
public:
    SculptPage(wxWindow* parent, const SettingsListener& listener);
    void Show(Viewer& viewer, bool brushAtHand);

    /// \param across length of the terrain in metres
    void SetTerrainSize(double across);

private:
    wxCheckBox* realTime_;
    wxChoice* brush_;
    std::unique_ptr<SliderField> radius_;
    std::unique_ptr<SliderField> strength_;
    wxButton* undo_;
    wxButton* redo_;
    wxButton* save_;
};

}  // namespace tessara
