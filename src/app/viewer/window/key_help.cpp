#include "app/viewer/window/key_help.h"

namespace tessara {

namespace {

constexpr KeyHelp kKeys[] = {
    {"", "Camera"},
    {"Left drag", "Turn the terrain; the grabbed point stays under the mouse"},
    {"Right drag, middle drag, Shift + left drag", "Move over the terrain"},
    {"Wheel", "Zoom towards the mouse"},
    {"Arrow keys", "Move over the terrain"},
    {"Page Up, Page Down", "Rise and sink"},
    {"Home", "Show all of the terrain"},
    {"N", "North up"},
    {"T", "From the top"},
    {"Click on the map", "Go there"},
    {"", "Flying"},
    {"F", "Begin and end flying"},
    {"W, S", "Fly forward and back"},
    {"A, D", "Fly to the left and to the right"},
    {"E, Q", "Rise and sink"},
    {"Mouse", "Look around"},
    {"Shift", "Fly faster; the speed also grows with the height above the ground"},
    {"Esc", "Land"},
    {"", "Sculpting"},
    {"R", "Real-time mode: the heights can be changed"},
    {"Left drag with a brush", "Raise, lower, smooth or flatten the ground"},
    {"Ctrl + left drag", "Turn the terrain while a brush is at hand"},
    {"[ and ]", "Smaller and larger brush"},
    {"Esc", "Put the brush away"},
    {"Ctrl + Z, Ctrl + Y", "Undo and redo"},
    {"", "Picture"},
    {"1, 2, 3", "Filled, wireframe, points"},
    {"L", "Colours of the detail levels"},
    {"B", "Boxes of the drawn nodes"},
    {"Z", "Freeze the detail while the camera moves on"},
    {"C", "Colours of the heights"},
    {"M", "Show or hide the map"},
    {"F9, F11", "Show or hide the side panel, fill the screen"},
    {"Ctrl + I, Ctrl + D", "Import a picture onto the ground, choose the detail texture"},
    {"", "Files"},
    {"Ctrl + O", "Open an elevation file or a project; files can also be dropped on the window"},
    {"Ctrl + S, Ctrl + Shift + S", "Save the project, and under another name"},
    {"Ctrl + H", "Save the heights as a GeoTIFF"},
    {"Ctrl + P", "Save a picture"},
    {"Ctrl + E", "Export the triangles"},
    {"Ctrl + Q", "Quit"},
    {"F1", "This list"},
};

}  // namespace

std::span<const KeyHelp> AllKeys()
{
    return kKeys;
}

}  // namespace tessara
