#pragma once

#include "types.h"

#include <string>

namespace tessara {

/// Path, absolute and without links, of the file that the code at an address was loaded from. A module that was loaded
/// by a relative path asks before the process's folder can change. \return empty where there is no such file
TESSARA_EXPORT std::string ModulePathOf(const void* address);

}  // namespace tessara
