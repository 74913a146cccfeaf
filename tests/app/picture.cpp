#include "app/picture.h"

#include <png.h>

#include <cstdlib>

namespace tessara {

Picture::Pixel Picture::At(int x, int y) const
{
    const std::uint8_t* pixel =
        bytes.data() +
        (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 3;
    return {pixel[0], pixel[1], pixel[2]};
}

Picture::Pixel Picture::Mean(int left, int top, int columns, int rows) const
{
    Pixel sum{0, 0, 0};
    for (int y = top; y < top + rows; ++y) {
        for (int x = left; x < left + columns; ++x) {
            const Pixel pixel = At(x, y);
            sum = {sum.red + pixel.red, sum.green + pixel.green, sum.blue + pixel.blue};
        }
    }
    const int count = columns * rows;
    return {sum.red / count, sum.green / count, sum.blue / count};
}

Picture ReadPicture(const std::string& path)
{
    Picture picture;
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        return picture;
    image.format = PNG_FORMAT_RGB;
    picture.bytes.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, picture.bytes.data(), 0, nullptr)) {
        picture.width = static_cast<int>(image.width);
        picture.height = static_cast<int>(image.height);
    }
    return picture;
}

int Difference(const Picture::Pixel& a, const Picture::Pixel& b)
{
    return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
}

}  // namespace tessara
