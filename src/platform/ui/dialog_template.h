#pragma once

#include "image.h"
#include "window_types.h"

#include <span>

namespace tessara {

enum class ControlKind {
    Label,
    GroupBox,
    EtchedLine,      ///< a horizontal one
    WhiteRectangle,  ///< filled
    Picture,         ///< shows `picture`
    Viewport,        ///< a white frame around a surface for OpenGL
    Button,
    DefaultButton,
    CheckBox,
    Edit,      ///< one line
    Spin,      ///< a pair of small arrows that steps the number in the control `buddy` and attaches itself to its right
    DropList,  ///< shows one of its rows; its height is the one that it has with the list open
    ListBox,   ///< rows in the order of their adding
};

/// One control. Controls that nobody addresses have the id 0.
struct ControlTemplate {
    int id;
    ControlKind kind;
    const char* text;
    short x, y, width, height;  ///< in dialog units, from the upper left corner of the dialog
    bool tabStop = false;
    bool multipleSelection = false;  ///< of a list box: Shift and Ctrl extend the selection
    int buddy = 0;
    Image (*picture)() = nullptr;            ///< of a picture; it is stretched to the control
    std::span<const char* const> rows = {};  ///< what a drop list holds from the start
};

/// A dialog as data. A dialog unit is a quarter of the font's average character width across, an eighth of its height
/// down.
struct DialogTemplate {
    UINT id;
    const char* title;
    short width, height;  ///< of the inside, in dialog units
    int fontPoints;
    bool systemMenu;                            ///< the title bar has a button that closes
    std::span<const ControlTemplate> controls;  ///< in tab order
};

}  // namespace tessara
