#include "app/viewer/window/settings_desk.h"

#include "app/viewer/viewer.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/work/setting_table.h"

#include <algorithm>
#include <utility>

namespace tessara {

SettingsDesk::SettingsDesk(Viewer& viewer, PicturePane& picture, std::function<void()> changed)
    : viewer_(viewer), picture_(picture), changed_(std::move(changed))
{
}

void SettingsDesk::Change(const std::function<void(ViewSettings&)>& change)
{
    if (!picture_.MakeCurrent())
        return;
    ViewSettings settings = viewer_.Settings();
    change(settings);
    const bool realTime = viewer_.Settings().realTime;
    viewer_.Apply(settings);
    // The mode is of use with a brush.
    if (settings.realTime != realTime)
        picture_.SetBrush(settings.realTime);
    changed_();
}

void SettingsDesk::Reset()
{
    picture_.SetBrush(false);
    Change([](ViewSettings& settings) { settings = {}; });
    FitBrush();
    ResetColors();
}

void SettingsDesk::TakeBrush(BrushKind kind)
{
    Change([kind](ViewSettings& settings) {
        settings.realTime = true;
        settings.brush.kind = kind;
    });
    picture_.SetBrush(true);
}

void SettingsDesk::ScaleBrush(double factor)
{
    if (!viewer_.HasTerrain())
        return;
    Change([radii = BrushRadii(TerrainSize()), factor](ViewSettings& settings) {
        settings.brush.radius = radii.Nearest(settings.brush.radius * factor);
    });
}

void SettingsDesk::FitBrush()
{
    ScaleBrush(1.0);
}

double SettingsDesk::TerrainSize() const
{
    const GroundFrame& ground = viewer_.Document().Session().Ground();
    return std::max(ground.Width(), ground.Depth());
}

void SettingsDesk::SetColors(double low, double high)
{
    if (viewer_.HasTerrain() && picture_.MakeCurrent())
        viewer_.SetColors(low, high);
}

void SettingsDesk::ResetColors()
{
    if (viewer_.HasTerrain() && picture_.MakeCurrent())
        viewer_.ResetColors();
}

}  // namespace tessara
