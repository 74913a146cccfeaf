#pragma once

#include "types.h"

#include <optional>
#include <string>

/// Places a constant array of characters, zero-terminated, into a module's file as the resource of a type and a number,
/// both string literals. Each resource is a section of its own, named ".tessara.TYPE.NUMBER", that the usual tools
/// show: readelf -p .tessara.VERSION.1 Tessara.so
#define TESSARA_RESOURCE(type, number) __attribute__((used, section(".tessara." type "." number)))

namespace tessara {

/// Reads a resource out of a module's file, without loading the module and without running any of its code.
/// \return nothing where the file can't be read, is no module of this machine's kind, or lacks the resource
/// \throws std::bad_alloc
TESSARA_EXPORT std::optional<std::string> ReadModuleResource(const std::string& modulePath, const char* type,
                                                             unsigned number);

}  // namespace tessara
