#pragma once

#include "app/viewer/work/view_settings.h"

#include <functional>

namespace tessara {

class PicturePane;
class Viewer;

/// Where settings are changed, whatever control or command asks for it.
class SettingsDesk {
public:
    /// \param viewer,picture outlive this object \param changed something is to be shown anew
    SettingsDesk(Viewer& viewer, PicturePane& picture, std::function<void()> changed);

    /// The settings become what the function makes of them.
    void Change(const std::function<void(ViewSettings&)>& change);

    /// Gives every setting its first value.
    void Reset();

    // The brush, which only works in the real-time mode.
    void TakeBrush(BrushKind kind);
    void ScaleBrush(double factor);

    /// Another terrain is open: the brush gets a radius that suits it.
    void FitBrush();

    /// Length of the terrain's longer side in metres.
    double TerrainSize() const;

    // Heights in metres that get the first and the last colour.
    void SetColors(double low, double high);
    void ResetColors();

private:
    Viewer& viewer_;
    PicturePane& picture_;
    std::function<void()> changed_;
};

}  // namespace tessara
