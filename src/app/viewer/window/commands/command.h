#pragma once

#include <wx/defs.h>

#include <span>
#include <string>

namespace tessara {

struct Workbench;

/// What the menus and keys of the window do.
enum CommandId : int {
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
    kRecent,  ///< the menu of recent files; the files follow
    kRecentEnd = kRecent + 20,
};

/// One thing that the window does: its line in a menu, its key, what the help says of it, and how it is done. Menus,
/// keys, the list of keys and the table in the manual come from here.
struct Command {
    enum class Kind { Plain, Check, Radio, Submenu };

    int id;
    const char* menu;   ///< title of the menu
    const char* label;  ///< of the line
    const char* key;    ///< such as "Ctrl+O" or "N"; empty for none. Keys without Ctrl work where nobody types
    const char* help;   ///< one sentence
    Kind kind = Kind::Plain;
    bool begins = false;  ///< a line separates it from those above

    void (*run)(Workbench&) = nullptr;
    bool (*enabled)(Workbench&) = nullptr;  ///< null: always
    bool (*checked)(Workbench&) = nullptr;  ///< null: not while it is of kind Plain, always else
    bool inPictureOnly = false;             ///< its key works in the panes alone

    bool IsEnabled(Workbench& bench) const { return !enabled || enabled(bench); }
};

/// All commands, menu after menu.
std::span<const Command> AllCommands();

/// \return null where there is none
const Command* FindCommand(int id);

/// The command of a key without modifier. \param key as key events number them \return null where there is none
const Command* CommandOfKey(int key);

/// The number of a key without modifier in key events. \return 0 for keys that the toolkit handles, and for none
int PlainKey(const Command& command);

/// A key as a person reads it: "Ctrl + O".
std::string KeyText(const Command& command);

/// The label as a person reads it, without the mark of its underlined letter.
std::string PlainLabel(const Command& command);

}  // namespace tessara
