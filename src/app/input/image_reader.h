#pragma once

#include "host/textures/texture_store.h"

#include <string>

namespace tessara {

/// Reads an image file through the image reader's class: size, depth and pixels of the element, without key and name.
/// \throws std::runtime_error; the reader has told the cause of a damaged file on the terminal by then
TextureElement ReadImage(const std::string& file);

}  // namespace tessara
