#pragma once

#include "host/textures/texture_store.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessara {

/// Reads an image file through the image reader's class: size, depth and pixels of the element, without key and name.
/// \throws std::runtime_error; the reader has told the cause of a damaged file on the terminal by then
TextureElement ReadImage(const std::string& file);

/// Its pixels as blue, green, red and alpha, as a project keeps those of a source texture.
std::vector<std::uint8_t> WithFourChannels(const TextureElement& image);

}  // namespace tessara
