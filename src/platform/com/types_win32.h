#pragma once

// The types of types.h as the system's own headers give them, without the macros that take names away from classes.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
// In this order.
#include <objbase.h>
#include <oleauto.h>
#include <olectl.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

// Names of the application framework's operations, and plain words.
#undef GetWindowText
#undef LoadBitmap
#undef LoadString
#undef MessageBox
#undef PostMessage
#undef SendMessage
#undef SetWindowText
#undef far
#undef near
#undef small

/// Marks what the shared libraries of this system export. The component's module has a list of its exports instead, and
/// everything else is linked.
#define TESSARA_EXPORT
