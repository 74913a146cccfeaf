#include "app/viewer/window/commands/key_help.h"
#include "app/viewer/window/commands/menu_commands.h"
#include "app/viewer/window/dialogs/about_dialog.h"
#include "app/viewer/window/workbench.h"

#include <wx/frame.h>

namespace tessara {

namespace {

constexpr const char* kHelp = "&Help";

constexpr Command kCommands[] = {
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

std::span<const Command> HelpCommands()
{
    return kCommands;
}

}  // namespace tessara
