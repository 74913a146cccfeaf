#pragma once

// The function of registered_message.h where the system has none.

#include "platform/com/types.h"

/// The number of a window message that all who ask for the same text share, in this process. Texts differ in more than
/// the case of their letters. \return 0xC000 to 0xFFFF; 0 for null, an empty text, and when there are no numbers left
TESSARA_EXPORT UINT RegisterWindowMessage(const char* text);
