#pragma once

#include <wx/defs.h>

#include <span>

class wxMenuBar;

namespace tessara {

/// What the menus and keys of the window do.
enum Command : int {
    kOpen = wxID_HIGHEST + 1,
    kOpenSample,
    kClearRecent,
    kSaveProject,
    kSaveProjectAs,
    kSaveHeights,
    kSavePicture,
    kExportTriangles,
    kQuit,
    kUndo,
    kRedo,
    kBrushAway,
    kBrushRaise,
    kBrushLower,
    kBrushSmooth,
    kBrushFlatten,
    kBrushSmaller,
    kBrushLarger,
    kFilled,
    kWireframe,
    kPoints,
    kShowAll,
    kNorthUp,
    kFromTop,
    kFly,
    kLevelColors,
    kNodeBoxes,
    kFreeze,
    kShowMap,
    kShowSide,
    kFullScreen,
    kImportSource,
    kSourceTexture,
    kVertexColors,
    kTerrainDetail,
    kRealTime,
    kResetSettings,
    kInformation,
    kKeys,
    kAbout,
    kRecent,  ///< the first of the recent files
    kRecentEnd = kRecent + 20,
};

/// A line of a menu. \param id 0 for a line between groups, -1 for the beginning of another menu
struct MenuLine {
    enum class Kind { Plain, Check, Radio, Submenu };
    int id;
    const char* label;  ///< with the keys that the toolkit handles
    const char* help;
    Kind kind = Kind::Plain;
    int key = 0;  ///< a key without modifier, which works where nobody types
};

/// All menus, one after the other.
std::span<const MenuLine> MenuLines();

/// Makes the menus, with the keys beside their lines.
wxMenuBar* MakeMenuBar();

/// The command of a key without modifier. \param key as key events number them \return 0 where there is none
int CommandOfKey(int key);

}  // namespace tessara
