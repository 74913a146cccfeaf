#pragma once

#include <cstddef>

namespace tessara {

/// Bytes that have to be readable behind an image of gluBuild2DMipmaps. Where the library rescales an image whose width
/// is a power of two but not its height, it looks at the pixel behind the last one, and gives it no weight.
inline constexpr std::size_t kMipmapSlack = 4;

}  // namespace tessara
