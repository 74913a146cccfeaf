#include "app/viewer/window/commands/menu_commands.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/settings_desk.h"
#include "app/viewer/window/workbench.h"

namespace tessara {

namespace {

using Kind = Command::Kind;

constexpr const char* kEdit = "&Edit";

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

constexpr Command kCommands[] = {
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
};

}  // namespace

std::span<const Command> EditCommands()
{
    return kCommands;
}

}  // namespace tessara
