#pragma once

#include "app/viewer/viewer.h"
#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/settings_desk.h"
#include "app/viewer/window/workbench.h"

namespace tessara {

// The commands of each menu, from top to bottom.
std::span<const Command> FileCommands();
std::span<const Command> EditCommands();
std::span<const Command> ViewCommands();
std::span<const Command> TerrainCommands();
std::span<const Command> HelpCommands();

// What entries of several menus have in common.

inline bool HasTerrain(Workbench& bench)
{
    return bench.viewer.HasTerrain();
}

/// A terrain that is shown while the whole of it is still being read can't be worked on.
inline bool CanWork(Workbench& bench)
{
    return bench.viewer.HasTerrain() && !bench.viewer.IsCoarse();
}

template <bool ViewSettings::*Field>
void Flip(Workbench& bench)
{
    bench.settings.Change([](ViewSettings& settings) { settings.*Field = !(settings.*Field); });
}

template <bool ViewSettings::*Field>
bool IsOn(Workbench& bench)
{
    return bench.viewer.Settings().*Field;
}

}  // namespace tessara
