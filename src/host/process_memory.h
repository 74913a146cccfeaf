#pragma once

#include <cstddef>

namespace tessara {

/// Memory that this process holds in main memory now, in bytes, or 0 where the system doesn't tell.
std::size_t ResidentBytes();

}  // namespace tessara
