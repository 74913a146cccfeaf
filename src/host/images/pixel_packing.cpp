#include "host/images/pixel_packing.h"

#include <cmath>
#include <cstddef>

namespace tessara {

namespace {

/// Where the file's pixels go: the place of (0, 0), and the steps to the next pixel and the next row, in pixels.
struct Walk {
    std::ptrdiff_t start;
    std::ptrdiff_t alongRow;
    std::ptrdiff_t alongColumn;
};

/// Bit 0: the file's columns run down the picture. Bit 1: the file's first row lies at the picture's far side (bottom
/// or right). Bit 2: so does its first column.
constexpr unsigned kTurns[9] = {0, 0, 4, 6, 2, 1, 3, 7, 5};

bool SwapsSides(int orientation)
{
    return (kTurns[orientation] & 1) != 0;
}

/// \param width,height of the upright picture, whose top row comes first
Walk WalkFor(int orientation, std::ptrdiff_t width, std::ptrdiff_t height)
{
    const unsigned turns = kTurns[orientation];
    const bool lastRow = (turns & 2) != 0;
    const bool lastColumn = (turns & 4) != 0;
    if ((turns & 1) == 0) {
        const std::ptrdiff_t row = lastRow ? height - 1 : 0;
        return {row * width + (lastColumn ? width - 1 : 0), lastColumn ? -1 : 1, lastRow ? -width : width};
    }
    const std::ptrdiff_t row = lastColumn ? height - 1 : 0;
    return {row * width + (lastRow ? width - 1 : 0), lastColumn ? -width : width, lastRow ? -1 : 1};
}

void PutPixel(const std::uint8_t* from, std::uint32_t channels, std::uint8_t* to)
{
    switch (channels) {
    case 1:
        to[0] = from[0];
        break;
    case 2:
        to[0] = to[1] = to[2] = from[0];
        to[3] = from[1];
        break;
    case 4:
        to[3] = from[3];
        [[fallthrough]];
    default:
        to[0] = from[2];
        to[1] = from[1];
        to[2] = from[0];
    }
}

}  // namespace

PackedImage Pack(const FileImage& image)
{
    const int orientation = image.orientation >= 1 && image.orientation <= 8 ? image.orientation : 1;
    const std::size_t bytes = image.channels == 1 ? 1 : image.channels == 3 ? 3 : 4;
    PackedImage packed;
    packed.width = SwapsSides(orientation) ? image.height : image.width;
    packed.height = SwapsSides(orientation) ? image.width : image.height;
    packed.bitsPerPixel = static_cast<std::uint16_t>(8 * bytes);
    packed.pixels.resize(std::size_t{image.width} * image.height * bytes);

    const Walk walk = WalkFor(orientation, packed.width, packed.height);
    const std::uint8_t* from = image.samples;
    for (std::uint32_t y = 0; y < image.height; ++y) {
        std::ptrdiff_t place = walk.start + static_cast<std::ptrdiff_t>(y) * walk.alongColumn;
        for (std::uint32_t x = 0; x < image.width; ++x, place += walk.alongRow, from += image.channels)
            PutPixel(from, image.channels, &packed.pixels[static_cast<std::size_t>(place) * bytes]);
    }
    return packed;
}

std::uint8_t ScreenByte(float light)
{
    if (!(light > 0.0f))
        return 0;
    if (light >= 1.0f)
        return 255;
    const float shown = light <= 0.0031308f ? 12.92f * light : 1.055f * std::pow(light, 1.0f / 2.4f) - 0.055f;
    return static_cast<std::uint8_t>(shown * 255.0f + 0.5f);
}

}  // namespace tessara
