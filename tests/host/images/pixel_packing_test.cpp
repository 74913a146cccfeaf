#include "host/images/pixel_packing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
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

TEST(PixelPacking, ChannelsBecomeGreyOrBlueGreenRedAndAlpha)
{
    const struct {
        std::uint32_t channels;
        std::uint16_t bits;
        std::string_view in, out;
    } cases[] = {
        {1, 8, "gh", "gh"}, {2, 32, "gahb", "gggahhhb"}, {3, 24, "rgbRGB", "bgrBGR"}, {4, 32, "rgbaRGBA", "bgraBGRA"}};
    for (const auto& c : cases) {
        const PackedImage image =
            tessara::Pack({2, 1, c.channels, 1, reinterpret_cast<const std::uint8_t*>(c.in.data())});
        EXPECT_EQ(image.bitsPerPixel, c.bits);
        EXPECT_EQ(Letters(image), c.out);
    }
}

TEST(PixelPacking, LightGoesThroughTheScreensCurve)
{
    EXPECT_EQ(tessara::ScreenByte(0.0f), 0);
    EXPECT_EQ(tessara::ScreenByte(0.002f), 7);    // 12.92 x 0.002 x 255 = 6.6
    EXPECT_EQ(tessara::ScreenByte(0.214f), 127);  // half as bright to the eye
    EXPECT_EQ(tessara::ScreenByte(1.0f), 255);
    EXPECT_EQ(tessara::ScreenByte(1e30f), 255);
    EXPECT_EQ(tessara::ScreenByte(-1.0f), 0);
    EXPECT_EQ(tessara::ScreenByte(std::numeric_limits<float>::quiet_NaN()), 0);
    EXPECT_EQ(tessara::ScreenByte(std::numeric_limits<float>::infinity()), 255);
}

}  // namespace
