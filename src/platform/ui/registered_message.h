#pragma once

// RegisterWindowMessage, the number of a window message that all who ask for the same text share. On Windows it is the
// system's.

#include "platform/com/types.h"

#ifndef _WIN32
#include "platform/ui/registered_message_posix.h"
#endif
