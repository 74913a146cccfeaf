#include "platform/ui/win32/picture_bitmap.h"

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

/// Weighs the four pixels around a point, with their colours multiplied by their opacity.
void Sample(const Image& image, double x, double y, std::uint8_t* out)
{
    const auto weigh = [](double place, int size, int& first, int& second) {
        place = std::clamp(place, 0.0, size - 1.0);
        first = static_cast<int>(place);
        second = std::min(first + 1, size - 1);
        return place - first;
    };
    int left = 0, right = 0, top = 0, bottom = 0;
    const double h = weigh(x, image.width, left, right);
    const double v = weigh(y, image.height, top, bottom);
    double sums[4] = {};
    const auto add = [&](int column, int row, double weight) {
        const std::uint8_t* pixel = image.At(column, row);
        for (int i = 0; i < 3; ++i)
            sums[i] += weight * pixel[i] * pixel[3] / 255.0;
        sums[3] += weight * pixel[3];
    };
    add(left, top, (1 - h) * (1 - v));
    add(right, top, h * (1 - v));
    add(left, bottom, (1 - h) * v);
    add(right, bottom, h * v);
    for (int i = 0; i < 4; ++i)  // blue comes first
        out[i] = static_cast<std::uint8_t>(sums[i == 3 ? 3 : 2 - i] + 0.5);
}

}  // namespace

PictureBitmap::PictureBitmap(const Image& image, int width, int height) : width_(width), height_(height)
{
    if (image.width <= 0 || image.height <= 0 || width <= 0 || height <= 0)
        return;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // the top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    if (!bitmap_)
        return;
    auto* out = static_cast<std::uint8_t*>(pixels);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x, out += 4)
            Sample(image, (x + 0.5) * image.width / width - 0.5, (y + 0.5) * image.height / height - 0.5, out);
    }
}

PictureBitmap::PictureBitmap(PictureBitmap&& other) noexcept
    : bitmap_(std::exchange(other.bitmap_, nullptr)), width_(other.width_), height_(other.height_)
{
}

PictureBitmap& PictureBitmap::operator=(PictureBitmap&& other) noexcept
{
    std::swap(bitmap_, other.bitmap_);
    std::swap(width_, other.width_);
    std::swap(height_, other.height_);
    return *this;
}

PictureBitmap::~PictureBitmap()
{
    if (bitmap_)
        DeleteObject(bitmap_);
}

void PictureBitmap::Draw(HDC device, int x, int y) const
{
    HDC memory = bitmap_ ? CreateCompatibleDC(device) : nullptr;
    if (!memory)
        return;
    HGDIOBJ before = SelectObject(memory, bitmap_);
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    AlphaBlend(device, x, y, width_, height_, memory, 0, 0, width_, height_, blend);
    SelectObject(memory, before);
    DeleteDC(memory);
}

}  // namespace tessara
