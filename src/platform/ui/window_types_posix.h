#pragma once

// The types of window_types.h where the system has none.

#include "../com/types_posix.h"

#include <cstdint>

/// Parameters and result of a window message.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// A colour as 0x00bbggrr.
using COLORREF = std::uint32_t;

inline constexpr BOOL TRUE = 1;
inline constexpr BOOL FALSE = 0;

inline constexpr COLORREF RGB(BYTE red, BYTE green, BYTE blue) noexcept
{
    return static_cast<COLORREF>(red | green << 8 | blue << 16);
}

/// Rectangle in pixels; the right and the bottom edge lie outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_COMMAND = 0x0111;  ///< a control's notification: see MakeCommand
inline constexpr UINT WM_MOUSEMOVE = 0x0200;

inline constexpr WPARAM VK_TAB = 0x09;
inline constexpr WPARAM VK_RETURN = 0x0D;
inline constexpr WPARAM VK_ESCAPE = 0x1B;

/// Notifications of controls.
inline constexpr UINT BN_CLICKED = 0;
inline constexpr UINT CBN_SELCHANGE = 1;
inline constexpr UINT LBN_SELCHANGE = 1;
inline constexpr UINT EN_KILLFOCUS = 0x0200;

/// Buttons of a message box, its result, and the ids of a dialog's closing buttons.
inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_YESNO = 4;
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

/// Flags of a file dialog.
inline constexpr DWORD OFN_OVERWRITEPROMPT = 2;
inline constexpr DWORD OFN_HIDEREADONLY = 4;
