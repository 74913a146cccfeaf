#pragma once

#include "platform/com/class_registry.h"

#include <string>

namespace tessara {

class RegistryData;

/// The key whose default value is the path of the file with a type description.
std::string TypeLibraryPathKey(const TypeLibraryId& library);

/// Enters a type description that lies in a module: one entry for each id, version and locale.
void AddTypeLibrary(const TypeLibraryId& library, const std::string& modulePath, RegistryData& data);

/// Takes the entry of this id, version and locale out, and the keys above it that are empty then. The key TypeLib
/// stays.
void RemoveTypeLibrary(const TypeLibraryId& library, RegistryData& data);

}  // namespace tessara
