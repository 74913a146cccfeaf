#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>

namespace tessara {

/// Size in pixels that an image file states.
struct StatedSize {
    std::uint64_t width;
    std::uint64_t height;
};

/// Reads the stated size of the formats whose decoders make room for the whole picture as soon as they open a file:
/// BMP, GIF, JPEG 2000 and WebP. \return nothing for other formats and headers that aren't understood
std::optional<StatedSize> SizeInHeader(std::istream& file);

/// Tells whether the file is a JPEG or PNG that stops before its end mark. The JPEG decoder fills up the rest of such a
/// picture in grey.
bool IsCutShort(std::istream& file);

/// Whether a Photoshop file states fewer channels than its colours are made of; the image library reads past their end.
bool LacksColours(std::istream& file);

}  // namespace tessara
