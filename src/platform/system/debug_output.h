#pragma once

// OutputDebugStringA, one line to the process's debug stream. Failures of OpenGL and internal ones go there; the user
// doesn't see them. On Windows it is the system's: debuggers show it.

#include "../com/types.h"

#ifndef _WIN32
#include "debug_output_posix.h"
#endif
