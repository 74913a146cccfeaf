#pragma once

#include "app/view/look.h"
#include "app/viewer/work/view_settings.h"

namespace tessara {

/// What a project keeps of a viewer's settings. A change of it is unsaved work; a movement of the camera isn't.
Look LookOf(const ViewSettings& settings, const HeightColors& colors);

/// What the settings say of the sea.
SeaChoice SeaChoiceOf(const ViewSettings& settings);

/// The settings with what a look says. \param azimuth of the camera, beside which the sun stands where the look doesn't
/// say
ViewSettings WithLook(ViewSettings settings, const Look& look, double azimuth);

}  // namespace tessara
