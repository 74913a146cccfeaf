#include "app/viewer/viewer.h"
#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/commands/key_help.h"
#include "app/viewer/window/dialogs/about_dialog.h"
#include "app/viewer/window/dialogs/information_dialog.h"
#include "app/viewer/window/files/file_desk.h"
#include "app/viewer/window/files/save_desk.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/panes/window_panes.h"
#include "app/viewer/window/settings_desk.h"
#include "app/viewer/window/texture_desk.h"
#include "app/viewer/window/workbench.h"

#include <wx/frame.h>

namespace tessara {

namespace {

using Kind = Command::Kind;

constexpr const char* kFile = "&File";
constexpr const char* kEdit = "&Edit";
constexpr const char* kView = "&View";
constexpr const char* kTerrain = "&Terrain";
constexpr const char* kHelp = "&Help";

bool HasTerrain(Workbench& bench)
{
    return bench.viewer.HasTerrain();
}

/// A terrain that is shown while the whole of it is still being read can't be worked at.
bool CanWork(Workbench& bench)
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

template <FillMode Mode>
void Fill(Workbench& bench)
{
    bench.settings.Change([](ViewSettings& settings) { settings.fill = Mode; });
}

template <FillMode Mode>
bool IsFill(Workbench& bench)
{
    return bench.viewer.Settings().fill == Mode;
}

template <BrushKind Brush>
void TakeBrush(Workbench& bench)
{
    bench.settings.TakeBrush(Brush);
}

template <BrushKind Brush>
bool HasBrush(Workbench& bench)
{
    return bench.picture.HasBrush() && bench.viewer.Settings().brush.kind == Brush;
}

template <void (CameraController::*Move)()>
void MoveCamera(Workbench& bench)
{
    (bench.viewer.Camera().*Move)();
}

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

    {.id = kUndo,
     .menu = kEdit,
     .label = "&Undo",
     .key = "Ctrl+Z",
     .help = "Take the last stroke of the brush back",
     .run = [](Workbench& bench) { bench.viewer.Sculptor().Undo(); },
     .enabled = [](Workbench& bench) { return HasTerrain(bench) && bench.viewer.Sculptor().CanUndo(); }},
    {.id = kRedo,
     .menu = kEdit,
     .label = "&Redo",
     .key = "Ctrl+Y",
     .help = "Repeat what was taken back",
     .run = [](Workbench& bench) { bench.viewer.Sculptor().Redo(); },
     .enabled = [](Workbench& bench) { return HasTerrain(bench) && bench.viewer.Sculptor().CanRedo(); }},
    {.id = kBrushAway,
     .menu = kEdit,
     .label = "&No Brush",
     .key = "",
     .help = "The left mouse button turns the terrain",
     .kind = Kind::Radio,
     .begins = true,
     .run = [](Workbench& bench) { bench.picture.SetBrush(false); },
     .checked = [](Workbench& bench) { return !bench.picture.HasBrush(); }},
    {.id = kBrushRaise,
     .menu = kEdit,
     .label = "R&aise",
     .key = "",
     .help = "The left mouse button raises the ground",
     .kind = Kind::Radio,
     .run = &TakeBrush<BrushKind::Raise>,
     .enabled = &CanWork,
     .checked = &HasBrush<BrushKind::Raise>},
    {.id = kBrushLower,
     .menu = kEdit,
     .label = "&Lower",
     .key = "",
     .help = "The left mouse button lowers the ground",
     .kind = Kind::Radio,
     .run = &TakeBrush<BrushKind::Lower>,
     .enabled = &CanWork,
     .checked = &HasBrush<BrushKind::Lower>},
    {.id = kBrushSmooth,
     .menu = kEdit,
     .label = "&Smooth",
     .key = "",
     .help = "The left mouse button smooths the ground",
     .kind = Kind::Radio,
     .run = &TakeBrush<BrushKind::Smooth>,
     .enabled = &CanWork,
     .checked = &HasBrush<BrushKind::Smooth>},
    {.id = kBrushFlatten,
     .menu = kEdit,
     .label = "&Flatten",
     .key = "",
     .help = "The left mouse button levels the ground where the stroke begins",
     .kind = Kind::Radio,
     .run = &TakeBrush<BrushKind::Flatten>,
     .enabled = &CanWork,
     .checked = &HasBrush<BrushKind::Flatten>},
    {.id = kBrushSmaller,
     .menu = kEdit,
     .label = "S&maller Brush",
     .key = "[",
     .help = "Make the brush smaller",
     .begins = true,
     .run = [](Workbench& bench) { bench.settings.ScaleBrush(1.0 / 1.2); }},
    {.id = kBrushLarger,
     .menu = kEdit,
     .label = "Lar&ger Brush",
     .key = "]",
     .help = "Make the brush larger",
     .run = [](Workbench& bench) { bench.settings.ScaleBrush(1.2); }},

    {.id = kFilled,
     .menu = kView,
     .label = "&Filled",
     .key = "1",
     .help = "Draw the surface",
     .kind = Kind::Radio,
     .run = &Fill<FillMode::Filled>,
     .checked = &IsFill<FillMode::Filled>},
    {.id = kWireframe,
     .menu = kView,
     .label = "&Wireframe",
     .key = "2",
     .help = "Draw the edges of the triangles",
     .kind = Kind::Radio,
     .run = &Fill<FillMode::Wireframe>,
     .checked = &IsFill<FillMode::Wireframe>},
    {.id = kPoints,
     .menu = kView,
     .label = "&Points",
     .key = "3",
     .help = "Draw the corners of the triangles",
     .kind = Kind::Radio,
     .run = &Fill<FillMode::Points>,
     .checked = &IsFill<FillMode::Points>},
    {.id = kShowAll,
     .menu = kView,
     .label = "Show &All",
     .key = "Home",
     .help = "Show all of the terrain",
     .begins = true,
     .run = &MoveCamera<static_cast<void (CameraController::*)()>(&CameraController::ShowAll)>,
     .enabled = &HasTerrain,
     .inPictureOnly = true},
    {.id = kNorthUp,
     .menu = kView,
     .label = "&North Up",
     .key = "N",
     .help = "Turn until north is at the top",
     .run = &MoveCamera<&CameraController::NorthUp>,
     .enabled = &HasTerrain},
    {.id = kFromTop,
     .menu = kView,
     .label = "From the &Top",
     .key = "T",
     .help = "Look straight down",
     .run = &MoveCamera<&CameraController::FromTop>,
     .enabled = &HasTerrain},
    {.id = kFly,
     .menu = kView,
     .label = "Fl&y",
     .key = "F",
     .help = "Fly with W, A, S, D and the mouse; Esc lands",
     .kind = Kind::Check,
     .run = [](Workbench& bench) { bench.picture.SetFlying(!bench.picture.IsFlying()); },
     .enabled = &HasTerrain,
     .checked = [](Workbench& bench) { return bench.picture.IsFlying(); }},
    {.id = kLevelColors,
     .menu = kView,
     .label = "&Level Colours",
     .key = "L",
     .help = "Colour triangles by the size of their nodes",
     .kind = Kind::Check,
     .begins = true,
     .run = &Flip<&ViewSettings::levelColors>,
     .checked = &IsOn<&ViewSettings::levelColors>},
    {.id = kNodeBoxes,
     .menu = kView,
     .label = "Node &Boxes",
     .key = "B",
     .help = "Draw the boxes of the nodes that are drawn",
     .kind = Kind::Check,
     .run = &Flip<&ViewSettings::nodeBoxes>,
     .checked = &IsOn<&ViewSettings::nodeBoxes>},
    {.id = kFreeze,
     .menu = kView,
     .label = "Free&ze the Detail",
     .key = "Z",
     .help = "Keep the detail while the camera moves on",
     .kind = Kind::Check,
     .run = &Flip<&ViewSettings::frozen>,
     .checked = &IsOn<&ViewSettings::frozen>},
    {.id = kShowMap,
     .menu = kView,
     .label = "Show the &Map",
     .key = "M",
     .help = "Show or hide the map",
     .kind = Kind::Check,
     .begins = true,
     .run = [](Workbench& bench) { bench.panes.SetMapShown(!bench.panes.IsMapShown()); },
     .checked = [](Workbench& bench) { return bench.panes.IsMapShown(); }},
    {.id = kShowSide,
     .menu = kView,
     .label = "Show the &Side Panel",
     .key = "F9",
     .help = "Show or hide the settings and the map",
     .kind = Kind::Check,
     .run = [](Workbench& bench) { bench.panes.SetSideShown(!bench.panes.IsSideShown()); },
     .checked = [](Workbench& bench) { return bench.panes.IsSideShown(); }},
    {.id = kFullScreen,
     .menu = kView,
     .label = "F&ull Screen",
     .key = "F11",
     .help = "Fill the screen",
     .kind = Kind::Check,
     .run =
         [](Workbench& bench) {
             bench.frame.ShowFullScreen(!bench.frame.IsFullScreen(), wxFULLSCREEN_NOCAPTION | wxFULLSCREEN_NOBORDER);
         },
     .checked = [](Workbench& bench) { return bench.frame.IsFullScreen(); }},

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

    {.id = kKeys,
     .menu = kHelp,
     .label = "&Keys and Mouse",
     .key = "F1",
     .help = "List all keys",
     .run = [](Workbench& bench) { ShowKeyHelp(&bench.frame); }},
    {.id = kAbout,
     .menu = kHelp,
     .label = "&About Tessara",
     .key = "",
     .help = "Version of the program",
     .run = [](Workbench& bench) { ShowAbout(&bench.frame); }},
};

}  // namespace

std::span<const Command> AllCommands()
{
    return kCommands;
}

}  // namespace tessara
