#pragma once

#include "app/viewer/work/kept_settings.h"

namespace tessara {

/// What the viewer keeps between two starts, in the user's folder for settings: $XDG_CONFIG_HOME/tessara/viewer.ini, or
/// ~/.config/tessara/viewer.ini. What can't be read counts as missing.
KeptSettings LoadSettings();

/// \return false where the file can't be written
bool SaveSettings(const KeptSettings& settings);

}  // namespace tessara
