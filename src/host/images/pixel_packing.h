#pragma once

#include <cstdint>
#include <vector>

namespace tessara {

/// An image as the system passes it on: rows without padding, the top row first.
struct PackedImage {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t bitsPerPixel = 0;  ///< 8 grey, 24 blue, green, red, 32 blue, green, red, alpha
    std::vector<std::uint8_t> pixels;
};

/// An image as it lies in a file: rows without padding, the top row first.
struct FileImage {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t channels = 0;  ///< 1 grey, 2 grey and alpha, 3 red, green, blue, 4 red, green, blue and alpha
    int orientation = 1;         ///< 1 to 8 as cameras write it; others count as 1: upright
    const std::uint8_t* samples = nullptr;
};

/// Turns a file's image upright and into the system's form. Grey with alpha becomes 32 bits. \throws std::bad_alloc
PackedImage Pack(const FileImage& image);

/// One sample of a picture that holds light as it is, 0 to 1, as the byte that a screen shows: through the sRGB curve.
/// Not a number is 0.
std::uint8_t ScreenByte(float light);

}  // namespace tessara
