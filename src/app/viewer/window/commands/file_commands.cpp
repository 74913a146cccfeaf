#include "app/viewer/window/commands/menu_commands.h"
#include "app/viewer/window/files/file_desk.h"
#include "app/viewer/window/files/save_desk.h"
#include "app/viewer/window/workbench.h"

#include <wx/frame.h>

namespace tessara {

namespace {

using Kind = Command::Kind;

constexpr const char* kFile = "&File";

constexpr Command kCommands[] = {
    {.id = kOpen,
     .menu = kFile,
     .label = "&Open...",
     .key = "Ctrl+O",
     .help =
         "Open an elevation file of any format that GDAL reads, or a project; files can also be dropped on the window",
     .run = [](Workbench& bench) { bench.files.AskAndOpen(); }},
    {.id = kOpenSample,
     .menu = kFile,
     .label = "Open the Sa&mple",
     .key = "",
     .help = "Open the terrain that comes with the program",
     .run = [](Workbench& bench) { bench.files.Load({}); }},
    {.id = kRecent,
     .menu = kFile,
     .label = "Open &Recent",
     .key = "",
     .help = "Open one of the nine files that were opened last",
     .kind = Kind::Submenu},
    {.id = kSaveProject,
     .menu = kFile,
     .label = "&Save Project",
     .key = "Ctrl+S",
     .help = "Save heights, colours, textures, light and camera in a project",
     .begins = true,
     .run = [](Workbench& bench) { bench.saves.SaveProject(); },
     .enabled = &CanWork},
    {.id = kSaveProjectAs,
     .menu = kFile,
     .label = "Save Project &As...",
     .key = "Ctrl+Shift+S",
     .help = "Save the project under another name",
     .run = [](Workbench& bench) { bench.saves.SaveProjectAs(); },
     .enabled = &CanWork},
    {.id = kSaveHeights,
     .menu = kFile,
     .label = "Save &Heights...",
     .key = "Ctrl+H",
     .help = "Save the heights as a GeoTIFF, an ASCII grid or a 16-bit PNG",
     .run = [](Workbench& bench) { bench.saves.SaveHeights(); },
     .enabled = &CanWork},
    {.id = kSavePicture,
     .menu = kFile,
     .label = "Save &Picture...",
     .key = "Ctrl+P",
     .help = "Save what the window shows as a picture of any size up to 16384 pixels",
     .begins = true,
     .run = [](Workbench& bench) { bench.saves.SavePicture(); },
     .enabled = &CanWork},
    {.id = kExportTriangles,
     .menu = kFile,
     .label = "&Export Triangles...",
     .key = "Ctrl+E",
     .help = "Write the triangles of this view as text, OBJ, PLY or STL",
     .run = [](Workbench& bench) { bench.saves.Export(); },
     .enabled = &CanWork},
    {.id = kQuit,
     .menu = kFile,
     .label = "&Quit",
     .key = "Ctrl+Q",
     .help = "Close the window",
     .begins = true,
     .run = [](Workbench& bench) { bench.frame.Close(); }},
};

}  // namespace

std::span<const Command> FileCommands()
{
    return kCommands;
}

}  // namespace tessara
