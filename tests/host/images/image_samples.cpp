#include "host/images/image_samples.h"

#include <unistd.h>

#include <fstream>
#include <iterator>

namespace tessara::test {

std::string Little(std::uint32_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
    return text;
}

std::string Big(std::uint32_t value, int bytes)
{
    const std::string text = Little(value, bytes);
    return {text.rbegin(), text.rend()};
}

std::string Psd(int mode, int channels, std::uint32_t width, std::uint32_t height, int bits, const std::string& planes)
{
    return "8BPS" + Big(1, 2) + std::string(6, '\0') + Big(static_cast<std::uint32_t>(channels), 2) + Big(height, 4) +
           Big(width, 4) + Big(static_cast<std::uint32_t>(bits), 2) + Big(static_cast<std::uint32_t>(mode), 2) +
           Big(0, 4) + Big(0, 4) + Big(0, 4) + Big(0, 2) + planes;
}

std::string Bmp(std::uint32_t width, std::uint32_t height, int bits, std::uint32_t compression,
                const std::string& palette, const std::string& rows)
{
    const auto start = static_cast<std::uint32_t>(54 + palette.size());
    const auto size = static_cast<std::uint32_t>(rows.size());
    return "BM" + Little(start + size, 4) + Little(0, 4) + Little(start, 4) + Little(40, 4) + Little(width, 4) +
           Little(height, 4) + Little(1, 2) + Little(static_cast<std::uint32_t>(bits), 2) + Little(compression, 4) +
           Little(size, 4) + Little(2835, 4) + Little(2835, 4) +
           Little(static_cast<std::uint32_t>(palette.size() / 4), 4) + Little(0, 4) + palette + rows;
}

std::string Tga(int type, std::uint32_t width, std::uint32_t height, int bits, const std::string& pixels)
{
    const std::string header = Little(0, 2) + Little(static_cast<std::uint32_t>(type), 1) + std::string(9, '\0');
    return header + Little(width, 2) + Little(height, 2) + Little(static_cast<std::uint32_t>(bits), 1) +
           Little(bits == 32 ? 8 : 0, 1) + pixels;
}

std::string HollowGif(std::uint32_t width, std::uint32_t height)
{
    const std::string size = Little(width, 2) + Little(height, 2);
    return "GIF89a" + size + Little(0x80, 3) + Little(0, 3) + Little(0xFFFFFF, 3) + "," + Little(0, 4) + size +
           Little(0, 1) + Little(2, 1) + Little(2, 1) + Little(0x014C, 2) + Little(0, 1) + ";";
}

std::string CmykJpeg()
{
    constexpr unsigned char kBytes[] = {
        0xFF, 0xD8, 0xFF, 0xEE, 0x00, 0x0E, 0x41, 0x64, 0x6F, 0x62, 0x65, 0x00, 0x64, 0x00, 0x00, 0x00, 0x00, 0x00,
        0xFF, 0xDB, 0x00, 0x43, 0x00, 0x03, 0x02, 0x02, 0x03, 0x02, 0x02, 0x03, 0x03, 0x03, 0x03, 0x04, 0x03, 0x03,
        0x04, 0x05, 0x08, 0x05, 0x05, 0x04, 0x04, 0x05, 0x0A, 0x07, 0x07, 0x06, 0x08, 0x0C, 0x0A, 0x0C, 0x0C, 0x0B,
        0x0A, 0x0B, 0x0B, 0x0D, 0x0E, 0x12, 0x10, 0x0D, 0x0E, 0x11, 0x0E, 0x0B, 0x0B, 0x10, 0x16, 0x10, 0x11, 0x13,
        0x14, 0x15, 0x15, 0x15, 0x0C, 0x0F, 0x17, 0x18, 0x16, 0x14, 0x18, 0x12, 0x14, 0x15, 0x14, 0xFF, 0xC0, 0x00,
        0x14, 0x08, 0x00, 0x01, 0x00, 0x02, 0x04, 0x43, 0x11, 0x00, 0x4D, 0x11, 0x00, 0x59, 0x11, 0x00, 0x4B, 0x11,
        0x00, 0xFF, 0xC4, 0x00, 0x14, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
        0x00, 0x00, 0x00, 0x00, 0x09, 0xFF, 0xC4, 0x00, 0x14, 0x10, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
        0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xFF, 0xDA, 0x00, 0x0E, 0x04, 0x43, 0x00, 0x4D, 0x00,
        0x59, 0x00, 0x4B, 0x00, 0x00, 0x3F, 0x00, 0x54, 0xC5, 0x50, 0xAA, 0x2A, 0x6F, 0xFF, 0xD9,
    };
    return {reinterpret_cast<const char*>(kBytes), sizeof kBytes};
}

}  // namespace tessara::test
