#pragma once

// wglGetProcAddress, the lookup of OpenGL entry points by their names. On Windows it is the system's.

#ifdef _WIN32
#include "platform/com/types_win32.h"
#else
#include "platform/gl/entry_point_posix.h"
#endif
