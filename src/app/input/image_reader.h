#pragma once

#include "host/textures/texture_store.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessara {

/// Reads an image file through the image reader's class: size, depth and pixels of the element, without key and name.
/// \throws std::runtime_error; the reader has told the cause of a damaged file on the terminal by then
TextureElement ReadImage(const std::string& file);

/// Its pixels as blue, green, red and alpha, the top row first, as a source texture has them: the first row lies in the
/// north.
std::vector<std::uint8_t> NorthFirst(const TextureElement& image);

}  // namespace tessara
