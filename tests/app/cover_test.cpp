// What covers a terrain: images, detail textures, colours, and the flat map.

#include "app/output/png_file.h"
#include "app/picture.h"
#include "app/program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tessara {
namespace {

class Cover : public testing::Test {
protected:
    Cover()
    {
        WriteGrid(plain, 32, 32, [](int, int) { return 5; });
    }

    /// The plain from above, north up, in even light, unless the options say otherwise.
    Picture FromAbove(const std::vector<std::string>& options)
    {
        std::vector<std::string> arguments = {"render", plain, "-o", scratch / "picture.png"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        for (const auto& [name, value] : {std::pair{"--size", "200x200"},
                                          {"--tilt", "90"},
                                          {"--azimuth", "0"},
                                          {"--sun", "0,90"},
                                          {"--palette", "grey"}}) {
            if (std::ranges::find(options, name) == options.end())
                arguments.insert(arguments.end(), {name, value});
        }
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_EQ(run.errors.find("texture"), std::string::npos) << run.errors;  // a search leaves no message
        return ReadPicture(scratch / "picture.png");
    }

    /// Mean brightness of the middle of a picture.
    static int Middle(const Picture& picture)
    {
        const Picture::Pixel mean = picture.Mean(70, 70, 60, 60);
        return mean.red + mean.green + mean.blue;
    }

    ScratchFolder scratch;
    std::string plain = scratch / "plain.asc";
};

TEST_F(Cover, AnImageLiesNorthUpAndIsNotMirrored)
{
    // Red in the north-west, green in the north-east, blue in the south-west, black in the south-east.
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 12; ++x) {
            const bool west = x < 6;
            const bool north = y < 4;
            for (const bool on : {west && north, !west && north, west && !north})
                pixels.push_back(on ? 255 : 0);
        }
    }
    const std::string image = scratch / "corners.png";
    WritePng(image, 12, 8, pixels);
    const Picture picture = FromAbove({"--source", image, "--no-color"});
    const auto at = [&](int x, int y) { return picture.Mean(x - 8, y - 8, 16, 16); };
    const Picture::Pixel northWest = at(65, 65);
    EXPECT_GT(northWest.red, northWest.green + 60);
    const Picture::Pixel northEast = at(135, 65);
    EXPECT_GT(northEast.green, northEast.red + 60);
    const Picture::Pixel southWest = at(65, 135);
    EXPECT_GT(southWest.blue, southWest.red + 60);
    const Picture::Pixel southEast = at(135, 135);
    EXPECT_LT(southEast.red + southEast.green + southEast.blue, 100);
}

TEST_F(Cover, AnImageShowsItsOwnColoursUnlessThoseOfTheHeightsAreMixedIn)
{
    const std::string image = scratch / "grey.png";
    WritePng(image, 4, 4, std::vector<std::uint8_t>(48, 128));
    const auto middle = [&](std::vector<std::string> options) {
        options.insert(options.end(), {"--source", image});
        return FromAbove(options).Mean(70, 70, 60, 60);
    };
    for (const char* sun : {"0,90", "300,38", "120,25"})
        EXPECT_LE(Difference(middle({"--sun", sun, "--palette", "natural"}), {128, 128, 128}), 9) << sun;
    const Picture::Pixel mixed = middle({"--mix-color"});
    EXPECT_LT(mixed.green, 110);
    EXPECT_LE(Difference(middle({"--mix-color", "--no-color"}), {128, 128, 128}), 9);
}

/// What a colour looks like in a light of 1, in which the bright ones are bent.
int Lit(int channel)
{
    const double light = channel * channel / 65025.0;
    return static_cast<int>(255.0 * std::sqrt(light > 0.5 ? 1.0 - 0.5 * std::exp(1.0 - 2.0 * light) : light));
}

TEST_F(Cover, EachPixelHasThePalettesColourOfItsHeightHoweverFewTheTriangles)
{
    // Valleys so shallow that no triangle is spent on them.
    WriteGrid(plain, 64, 64, [](int x, int y) { return 5.0 + std::sin(x * 0.6) + std::cos(y * 0.45); });
    for (const char* palette : {"natural", "desert"}) {
        const ProgramRun run = RunTessara({"map", plain, "-o", scratch / "map.png", "--palette", palette});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        const Picture map = ReadPicture(scratch / "map.png");
        // From far above the middle of the grid, so that a cell takes ten pixels and the air nothing.
        const Picture picture = FromAbove(
            {"--palette", palette, "--camera", "315,315,5005", "--fov", "7.3236", "--size", "640x640", "--lod", "1"});
        for (int y = 1; y < 63; ++y) {
            for (int x = 1; x < 63; ++x) {
                const Picture::Pixel color = map.At(x, y);
                const Picture::Pixel expected{Lit(color.red), Lit(color.green), Lit(color.blue)};
                ASSERT_LE(Difference(picture.Mean(10 * x + 4, 10 * y + 4, 2, 2), expected), 16) << x << ", " << y;
            }
        }
    }
}

TEST_F(Cover, ADetailTextureShowsAndHighBrightnessBrightens)
{
    const int plainLight = Middle(FromAbove({}));
    const Picture low = FromAbove({"--detail", "Rock", "--tiling", "4", "4"});
    const Picture high = FromAbove({"--detail", "Rock", "--tiling", "4", "4", "--brightness", "high"});
    int differing = 0;
    for (int i = 0; i < 60; ++i)
        differing += Difference(low.At(70 + i, 100), low.At(100, 100)) > 10 ? 1 : 0;
    EXPECT_GT(differing, 15);                   // the plain itself has one colour
    EXPECT_NEAR(Middle(low), plainLight, 130);  // grey around the middle
    EXPECT_GT(Middle(high), Middle(low) + 40);
    EXPECT_GT(Middle(FromAbove({"--no-color"})), plainLight + 40);  // white in place of the palette
}

TEST_F(Cover, WhatIsNotThereIsSaidAndNothingIsWritten)
{
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--detail", "No such texture"}, {"--source", scratch / "missing.png"}}) {
        std::vector<std::string> arguments = {"render", plain, "-o", scratch / "picture.png"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProgramRun run = RunTessara(arguments);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_NE(run.errors.find(options[1]), std::string::npos) << run.errors;
        EXPECT_EQ(scratch.List(), std::vector<std::string>{"plain.asc"});
    }
}

TEST_F(Cover, TheMapHasAPixelACellWithTheNorthernRowAtTheTop)
{
    const std::string slope = scratch / "slope.asc";
    WriteGrid(slope, 5, 3, [](int x, int y) { return x == 4 && y == 0 ? 255 : 10 * y; });
    const ProgramRun run = RunTessara({"map", slope, "-o", scratch / "map.png"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const Picture map = ReadPicture(scratch / "map.png");
    ASSERT_EQ(map.width, 5);
    ASSERT_EQ(map.height, 3);
    EXPECT_EQ(Difference(map.At(4, 0), {255, 255, 255}), 0);  // the top of the ramp
    EXPECT_EQ(Difference(map.At(0, 0), {0, 136, 0}), 0);      // the bottom
    EXPECT_EQ(Difference(map.At(0, 2), {0, 168, 0}), 0);      // entry 20
}

}  // namespace
}  // namespace tessara
