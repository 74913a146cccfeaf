#pragma once

#include "platform/ui/image.h"

#include <wx/bitmap.h>
#include <wx/image.h>

namespace tessara {

/// A picture in the toolkit's own form. An empty picture gives an invalid bitmap.
inline wxBitmap ToBitmap(const Image& image)
{
    if (image.pixels.empty())
        return wxBitmap();
    wxImage copy(image.width, image.height, false);
    copy.SetAlpha();
    const std::uint8_t* pixel = image.pixels.data();
    const std::size_t count = image.pixels.size() / 4;
    for (std::size_t i = 0; i < count; ++i, pixel += 4) {
        for (std::size_t channel = 0; channel < 3; ++channel)
            copy.GetData()[i * 3 + channel] = pixel[channel];
        copy.GetAlpha()[i] = pixel[3];
    }
    return wxBitmap(copy);
}

}  // namespace tessara
