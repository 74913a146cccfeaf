#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessara {

/// A picture of four bytes a pixel, red, green, blue and alpha, without padding, the top row first.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    Image() = default;
    Image(int columns, int rows)
        : width(columns), height(rows), pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows) * 4)
    {
    }

    std::uint8_t* At(int x, int y) { return pixels.data() + Offset(x, y); }
    const std::uint8_t* At(int x, int y) const { return pixels.data() + Offset(x, y); }

private:
    std::size_t Offset(int x, int y) const
    {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4;
    }
};

}  // namespace tessara
