#pragma once

#include "platform/ui/image.h"
#include "platform/ui/window_types.h"

namespace tessara {

/// A picture as the system draws it, with its transparency, stretched to a size.
class PictureBitmap {
public:
    PictureBitmap() noexcept = default;
    PictureBitmap(const Image& image, int width, int height);
    PictureBitmap(PictureBitmap&& other) noexcept;
    PictureBitmap& operator=(PictureBitmap&& other) noexcept;
    ~PictureBitmap();

    /// Null for an empty picture.
    HBITMAP Get() const noexcept { return bitmap_; }

    void Draw(HDC device, int x, int y) const;

private:
    HBITMAP bitmap_ = nullptr;
    int width_ = 0;
    int height_ = 0;
};

}  // namespace tessara
