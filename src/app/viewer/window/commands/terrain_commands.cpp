#include "app/viewer/window/commands/menu_commands.h"
#include "app/viewer/window/dialogs/information_dialog.h"
#include "app/viewer/window/settings_desk.h"
#include "app/viewer/window/texture_desk.h"
#include "app/viewer/window/workbench.h"

#include <wx/frame.h>

namespace tessara {

namespace {

using Kind = Command::Kind;

constexpr const char* kTerrain = "&Terrain";

constexpr Command kCommands[] = {
    {.id = kImportSource,
     .menu = kTerrain,
     .label = "&Import Source Texture...",
     .key = "Ctrl+I",
     .help = "Stretch a JPEG, PNG, BMP, TGA or PSD picture over the terrain, north up",
     .run = [](Workbench& bench) { bench.textures.Import(); },
     .enabled = &CanWork},
    {.id = kSourceTexture,
     .menu = kTerrain,
     .label = "Show Source Te&xture",
     .key = "",
     .help = "Show or hide the picture on the terrain",
     .kind = Kind::Check,
     .run = &Flip<&ViewSettings::sourceTexture>,
     .enabled = [](Workbench& bench) { return bench.textures.HasSource(); },
     .checked = [](Workbench& bench) { return bench.textures.HasSource() && bench.viewer.Settings().sourceTexture; }},
    {.id = kTerrainDetail,
     .menu = kTerrain,
     .label = "Terrain &Detail...",
     .key = "Ctrl+D",
     .help = "Choose and tune the texture that is tiled over the terrain",
     .run = [](Workbench& bench) { bench.textures.OpenDialog(); },
     .enabled = &CanWork},
    {.id = kVertexColors,
     .menu = kTerrain,
     .label = "Height &Colours",
     .key = "C",
     .help = "Colour the terrain by its heights",
     .kind = Kind::Check,
     .run = &Flip<&ViewSettings::vertexColors>,
     .checked = &IsOn<&ViewSettings::vertexColors>},
    {.id = kRealTime,
     .menu = kTerrain,
     .label = "&Real-Time Mode",
     .key = "R",
     .help = "Let the heights be changed",
     .kind = Kind::Check,
     .begins = true,
     .run = &Flip<&ViewSettings::realTime>,
     .enabled = &CanWork,
     .checked = &IsOn<&ViewSettings::realTime>},
    {.id = kResetSettings,
     .menu = kTerrain,
     .label = "R&eset All Settings",
     .key = "",
     .help = "Give every setting its first value",
     .begins = true,
     .run = [](Workbench& bench) { bench.settings.Reset(); }},
    {.id = kInformation,
     .menu = kTerrain,
     .label = "I&nformation...",
     .key = "",
     .help = "Size, place and heights of the terrain, and what was done to its file",
     .run = [](Workbench& bench) { ShowInformation(&bench.frame, bench.viewer.Document()); },
     .enabled = &HasTerrain},
};

}  // namespace

std::span<const Command> TerrainCommands()
{
    return kCommands;
}

}  // namespace tessara
