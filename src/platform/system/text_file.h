#pragma once

#include "platform/com/types.h"

#include <cstdio>

namespace tessara {

/// Opens a text file to be written anew. Lines end in a line feed alone on every system.
/// \param path UTF-8 \return null where that fails; else the caller's to close
TESSARA_EXPORT std::FILE* CreateTextFile(const char* path);

}  // namespace tessara
