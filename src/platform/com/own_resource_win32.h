#pragma once

#include <string_view>

namespace tessara {

/// The bytes of a resource in the file that an address was loaded from, valid as long as that is in memory.
/// \return empty where there is no such resource
std::string_view OwnResource(const void* address, const char* type, unsigned short number) noexcept;

}  // namespace tessara
