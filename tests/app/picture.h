#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessara {

/// A decoded PNG file; 0 x 0 for a file that isn't one.
struct Picture {
    struct Pixel {
        int red;
        int green;
        int blue;
    };

    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;  ///< red, green, blue, the top row first

    Pixel At(int x, int y) const;

    /// Mean of all pixels of a rectangle.
    Pixel Mean(int left, int top, int columns, int rows) const;
};

Picture ReadPicture(const std::string& path);

/// Sum of the differences of the three channels.
int Difference(const Picture::Pixel& a, const Picture::Pixel& b);

}  // namespace tessara
