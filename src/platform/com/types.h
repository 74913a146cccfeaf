#pragma once

// The binary types of the component model, as 64-bit hosts see them. On Windows the system's own headers give them;
// everything else includes this header and no other for them.

#ifdef _WIN32
#include "types_win32.h"
#else
#include "types_posix.h"
#endif
