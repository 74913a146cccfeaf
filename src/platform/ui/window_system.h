#pragma once

#include "dialog_template.h"
#include "window_types.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessara {

class DialogEvents;

/// What the user is asked to choose: one file.
struct FileQuestion {
    struct Filter {
        std::string name;
        std::string patterns;  ///< such as "*.tif;*.tiff"; "*.*" stands for every file
    };

    bool open = true;  ///< false: a file to write
    bool confirmOverwrite = false;
    std::string name;       ///< proposed
    std::string extension;  ///< for a name typed without one; may have the form "*.*", which adds none
    std::vector<Filter> filters;
};

/// A window system: everything that the portable classes of this room ask of the screen. One object serves the process,
/// from any thread that the system can be used from, which is one at a time.
///
/// A parent of null is the application's main window, if it has one. Texts and paths are UTF-8.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// Whether windows can be opened. Where not, dialogs and file questions are cancelled at once.
    virtual bool CanOpenWindows() const = 0;

    /// Shows a modal dialog until DialogWindow::End. \return its result, IDCANCEL where it couldn't be shown
    virtual int RunDialog(const DialogTemplate& dialog, DialogEvents& events, NativeWindow parent) = 0;

    /// Shows a message. \param buttons MB_OK or MB_YESNO \return IDOK, IDYES or IDNO
    virtual int ShowMessage(const std::string& text, const std::string& caption, UINT buttons, NativeWindow parent) = 0;

    /// \return the path of the file that the user chose, or none
    virtual std::optional<std::string> AskForFile(const FileQuestion& question, NativeWindow parent) = 0;

    /// The mouse shows that the user has to wait, from the first Begin to the last End.
    virtual void BeginWaitCursor() = 0;
    virtual void EndWaitCursor() = 0;

    /// Opens an address in the user's browser. \return false where that isn't possible
    virtual bool OpenAddress(const std::string& address) = 0;
};

/// The window system of the process: the one of SetWindowSystem, or else the desktop's, whose toolkit is loaded and
/// started by the first call. Where there is no display, it is NullWindowSystem.
TESSARA_EXPORT WindowSystem& CurrentWindowSystem() noexcept;

/// Who shows the windows of the process from now on. It outlives its use; null brings the desktop's back.
/// \return the one of the last call, null for the desktop's
TESSARA_EXPORT WindowSystem* SetWindowSystem(WindowSystem* system) noexcept;

/// A system without windows: everything is cancelled at once, messages go to standard error.
TESSARA_EXPORT WindowSystem& NullWindowSystem() noexcept;

/// Entry of a library that shows windows, exported under the name kWindowSystemEntry. Called once in a process.
/// \return the system, which lives as long as the process; null where no display answers
using WindowSystemEntry = WindowSystem* (*)();
inline constexpr char kWindowSystemEntry[] = "TessaraWindowSystem1";

}  // namespace tessara
