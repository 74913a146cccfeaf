#pragma once

#include <filesystem>

namespace tessara {

/// Folders of the user for what programs keep, by the XDG rules: data that is worth keeping, and state that may be
/// lost. They need not exist.
std::filesystem::path UserDataFolder();   ///< $XDG_DATA_HOME or ~/.local/share
std::filesystem::path UserStateFolder();  ///< $XDG_STATE_HOME or ~/.local/state

}  // namespace tessara
