#include "app/viewer/window/commands/menu_commands.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/panes/window_panes.h"
#include "app/viewer/window/settings_desk.h"
#include "app/viewer/window/workbench.h"

#include <wx/frame.h>

namespace tessara {

namespace {

using Kind = Command::Kind;

constexpr const char* kView = "&View";

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

template <void (CameraController::*Move)()>
void MoveCamera(Workbench& bench)
{
    (bench.viewer.Camera().*Move)();
}

constexpr Command kCommands[] = {
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
};

}  // namespace

std::span<const Command> ViewCommands()
{
    return kCommands;
}

}  // namespace tessara
