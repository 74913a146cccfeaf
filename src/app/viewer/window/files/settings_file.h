#pragma once

#include "app/viewer/work/kept_settings.h"

#include <functional>

namespace tessara {

/// What the viewer keeps between two starts, in the user's folder for settings: $XDG_CONFIG_HOME/tessara/viewer.ini, or
/// ~/.config/tessara/viewer.ini. What can't be read counts as missing.
KeptSettings LoadSettings();

/// Changes what the file holds. Several programs take turns, and each finds what the others have written; whoever is
/// killed leaves the file as it was. \return false where the file can't be written
bool ChangeSettings(const std::function<void(SettingsMap&)>& change);

}  // namespace tessara
