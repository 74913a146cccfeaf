#pragma once

// The types and numbers of window_types.h as the system's own headers give them.

#include "../com/types_win32.h"

#include <commdlg.h>
