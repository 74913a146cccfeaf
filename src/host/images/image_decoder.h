#pragma once

#include "host/images/pixel_packing.h"

#include <functional>
#include <string>

namespace tessara {

/// Largest picture that is read: about the largest that OpenGL drivers take, and 256 MiB of pixels.
inline constexpr std::uint64_t kMaxImageSide = 16384;
inline constexpr std::uint64_t kMaxImagePixels = std::uint64_t{1} << 26;

/// Reads a picture of any format that the image library knows, whole, first subimage, upright. Palettes, CMYK, 16-bit
/// and floating-point samples become 8 bits; light in floating point goes through the sRGB curve. A size beyond the
/// limits, or one that the file is far too short for, fails before memory is taken.
/// \param path UTF-8
/// \param progress told of the part read, 0 to 1; may be empty
/// \throws std::runtime_error that says in one sentence which file failed and why; std::bad_alloc
PackedImage DecodeImage(const std::string& path, const std::function<void(float)>& progress = {});

}  // namespace tessara
