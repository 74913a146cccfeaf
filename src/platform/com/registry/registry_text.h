#pragma once

#include "platform/com/registry/registry_data.h"

#include <string>
#include <string_view>

namespace tessara {

/// The registry as a text file: a line that says what it is, a section in brackets for each key, a line for each value,
/// and an end line with a checksum over all before it.
std::string WriteRegistryText(const RegistryData& data);

/// Reads what WriteRegistryText writes, and nothing else: text that was cut short or changed is refused.
/// \param path name of the file, for the sentence of a failure
/// \throws RegistryError with REGDB_E_READREGDB
RegistryData ReadRegistryText(std::string_view text, const std::string& path);

}  // namespace tessara
