#include "app/viewer/window/commands/key_help.h"

#include "app/viewer/window/commands/command.h"

#include <algorithm>
#include <string_view>

namespace tessara {

namespace {

/// What isn't a command.
const TableRow kGestures[] = {
    {"", "Camera"},
    {"Left drag", "Turn the terrain; the grabbed point stays under the mouse"},
    {"Right drag, middle drag, Shift + left drag", "Move over the terrain"},
    {"Wheel", "Zoom towards the mouse"},
    {"Arrow keys", "Move over the terrain"},
    {"Page Up, Page Down", "Rise and sink"},
    {"Click on the map", "Go there"},
    {"", "Flying"},
    {"W, S", "Fly forward and back"},
    {"A, D", "Fly to the left and to the right"},
    {"E, Q", "Rise and sink"},
    {"Mouse", "Look around"},
    {"Shift", "Fly faster; the speed also grows with the height above the ground"},
    {"Esc", "Land"},
    {"", "Sculpting"},
    {"Left drag with a brush", "Raise, lower, smooth or flatten the ground"},
    {"Ctrl + left drag", "Turn the terrain while a brush is at hand"},
    {"Esc", "Put the brush away"},
};

}  // namespace

std::vector<TableRow> KeyHelp()
{
    std::vector<TableRow> rows(std::begin(kGestures), std::end(kGestures));
    std::string_view menu;
    for (const Command& command : AllCommands()) {
        if (KeyText(command).empty())
            continue;
        if (menu != command.menu) {
            menu = command.menu;
            std::string heading(menu);
            std::erase(heading, '&');
            rows.push_back({"", heading});
        }
        rows.push_back({KeyText(command), command.help});
    }
    return rows;
}

void ShowKeyHelp(wxWindow* parent)
{
    ShowTable(parent, "Keys and Mouse", KeyHelp());
}

}  // namespace tessara
