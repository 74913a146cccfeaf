#pragma once

#include <cstdint>
#include <string>

namespace tessara::test {

std::string Little(std::uint32_t value, int bytes);
std::string Big(std::uint32_t value, int bytes);

/// A Photoshop file without layers. \param mode 1 grey, 3 RGB, 4 CMYK \param planes one channel behind the other
std::string Psd(int mode, int channels, std::uint32_t width, std::uint32_t height, int bits, const std::string& planes);

/// A Windows bitmap. \param palette blue, green, red, 0 for each entry \param rows bottom row first, padded to 4 bytes
std::string Bmp(std::uint32_t width, std::uint32_t height, int bits, std::uint32_t compression,
                const std::string& palette, const std::string& rows);

/// A Targa file. \param type 2 plain colours, 10 packed ones \param pixels blue, green, red, alpha; bottom row first
std::string Tga(int type, std::uint32_t width, std::uint32_t height, int bits, const std::string& pixels);

/// A GIF that states a size and holds next to nothing.
std::string HollowGif(std::uint32_t width, std::uint32_t height);

/// A JPEG of 2 x 1 pixels in CMYK, both red.
std::string CmykJpeg();

}  // namespace tessara::test
