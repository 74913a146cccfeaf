#pragma once

// The C functions of the component model, under their usual names. On Windows they are the system's. Elsewhere one
// shared library implements them, so that a host and every module in the process see the same class table and the same
// allocator.

#include "unknown.h"

#ifndef _WIN32
#include "com_posix.h"
#endif
