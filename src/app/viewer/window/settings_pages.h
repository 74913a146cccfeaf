#pragma once

#include "app/viewer/view_settings.h"
#include "app/viewer/window/setting_controls.h"

#include <memory>

class wxButton;
class wxCheckBox;
class wxChoice;
class wxTextCtrl;

namespace tessara {

class Viewer;
struct FrameFigures;

/// What the pages of settings tell the window.
struct SettingsListener {
    /// A setting becomes what the function makes of it.
    std::function<void(const std::function<void(ViewSettings&)>& change)> change;

    /// One of the commands was asked for.
    std::function<void(int command)> run;

    /// Heights in metres that get the first and the last colour.
    std::function<void(double low, double high)> colors;
    std::function<void()> resetColors;
};

/// Detail, proportions, sun and air.
class ViewPage final : public SettingsPage {
public:
    ViewPage(wxWindow* parent, const SettingsListener& listener);
    void Show(const ViewSettings& settings);

private:
    std::unique_ptr<SliderField> detail_;
    std::unique_ptr<SliderField> exaggeration_;
    wxChoice* fill_;
    std::unique_ptr<SliderField> azimuth_;
    std::unique_ptr<SliderField> height_;
    std::unique_ptr<SliderField> fog_;
};

/// Colours of the heights, and pictures on the ground.
class ColorsPage final : public SettingsPage {
public:
    ColorsPage(wxWindow* parent, const SettingsListener& listener);
    void Show(const Viewer& viewer, bool hasSource);

private:
    wxTextCtrl* AddHeight(const std::string& title, const std::string& help);

    wxCheckBox* colors_;
    wxChoice* ramp_;
    wxTextCtrl* low_;
    wxTextCtrl* high_;
    wxCheckBox* source_;
};

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

/// What developers look at.
class DebugPage final : public SettingsPage {
public:
    DebugPage(wxWindow* parent, const SettingsListener& listener);
    void Show(const ViewSettings& settings, const FrameFigures& figures, double framesPerSecond);

private:
    wxCheckBox* levels_;
    wxCheckBox* boxes_;
    wxCheckBox* freeze_;
    std::vector<wxStaticText*> figures_;
};

}  // namespace tessara
