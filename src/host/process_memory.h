#pragma once

#include <cstddef>

namespace tessara {

/// Memory that this process holds in main memory now, in bytes, or 0 where the system doesn't tell.
std::size_t ResidentBytes();

/// From now on large blocks, such as the heights and the trees of terrains, go back to the system as soon as they are
/// freed, in place of being kept for later ones. For programs that open terrains and close them again.
void ReturnLargeBlocks() noexcept;

}  // namespace tessara
