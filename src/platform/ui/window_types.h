#pragma once

// Types and numbers of windows and their messages. On Windows the system's own headers give them.

#ifdef _WIN32
#include "window_types_win32.h"
#else
#include "window_types_posix.h"
#endif

#include <cstdint>

namespace tessara {

/// A message on its way to a control.
struct InputMessage {
    UINT message;
    WPARAM wParam;  ///< the key of WM_KEYDOWN
    LPARAM lParam;
    int control;  ///< id of the control that it goes to, 0 for the dialog itself
};

/// First parameter of WM_COMMAND: a control's id below its notification.
inline constexpr WPARAM MakeCommand(int control, UINT notification) noexcept
{
    return static_cast<WPARAM>(static_cast<std::uint16_t>(control)) | static_cast<WPARAM>(notification) << 16;
}

inline constexpr int CommandControl(WPARAM command) noexcept
{
    return static_cast<int>(command & 0xFFFF);
}

inline constexpr UINT CommandNotification(WPARAM command) noexcept
{
    return static_cast<UINT>(command >> 16 & 0xFFFF);
}

/// A window as its window system knows it; the GtkWidget* on GTK, the HWND on Windows. Null stands for the
/// application's main window.
using NativeWindow = void*;

}  // namespace tessara
