#include "host/images/pixel_packing.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using tessara::FileImage;
using tessara::PackedImage;

std::string Letters(const PackedImage& image)
{
    return {image.pixels.begin(), image.pixels.end()};
}

TEST(PixelPacking, EveryOrientationComesUprightWithTheTopRowFirst)
{
    // Upright, the picture is  ABC  .
    //                          DEF
    const struct {
        int orientation;
        std::uint32_t width, height;  // in the file
        std::string_view rows;        // in the file, top row first
    } cases[] = {
        {1, 3, 2, "ABCDEF"}, {2, 3, 2, "CBAFED"}, {3, 3, 2, "FEDCBA"}, {4, 3, 2, "DEFABC"}, {5, 2, 3, "ADBECF"},
        {6, 2, 3, "CFBEAD"}, {7, 2, 3, "FCEBDA"}, {8, 2, 3, "DAEBFC"}, {0, 3, 2, "ABCDEF"}, {9, 3, 2, "ABCDEF"},
    };
    for (const auto& c : cases) {
        const PackedImage image =
            tessara::Pack({c.width, c.height, 1, c.orientation, reinterpret_cast<const std::uint8_t*>(c.rows.data())});
        EXPECT_EQ(image.width, 3u);
        EXPECT_EQ(image.height, 2u);
        EXPECT_EQ(Letters(image), "ABCDEF") << "orientation " << c.orientation;
    }
}

}  // namespace
