#include "textures/elevation_palette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <memory>

namespace {

using Rgb = std::array<int, 3>;

Rgb ColorAt(const ElevationPalette& palette, int index)
{
    const auto i = static_cast<std::int16_t>(index);
    return {palette.GetRed(i), palette.GetGreen(i), palette.GetBlue(i)};
}

TEST(ElevationPalette, DefaultRampHasItsKnownEntries)
{
    const ElevationPalette palette;
    const std::pair<int, Rgb> entries[] = {
        {0, {0, 136, 0}},     {1, {0, 137, 0}},       {25, {0, 176, 0}},      {50, {0, 217, 0}},
        {51, {1, 216, 0}},    {100, {45, 167, 22}},   {199, {135, 68, 66}},   {200, {135, 67, 67}},
        {201, {137, 71, 71}}, {228, {196, 163, 163}}, {254, {253, 252, 252}}, {255, {255, 255, 255}},
    };
    for (const auto& [index, color] : entries)
        EXPECT_EQ(ColorAt(palette, index), color) << index;
    EXPECT_EQ(palette.nodes, (std::vector<std::uint8_t>{0, 50, 200, 255}));
}

TEST(ElevationPalette, IndexOfTruncatesAndGivesTheTopEntryOutsideTheRange)
{
    const ElevationPalette palette;
    const std::pair<float, int> cases[] = {
        // 65546 keeps its low 16 bits; 2^55 * 255 is a multiple of 65536, 255 * 2^24 is beyond 31 bits.
        {0.0f, 0},        {0.5f, 127},        {1.0f, 255},      {2.0f, 255}, {-1.0f, 255},
        {-0.003f, 0},     {-0.004f, 255},     {0.00392f, 0},    {0.004f, 1}, {257.04315f, 10},
        {1e30f, 0},       {INFINITY, 255},    {-INFINITY, 255}, {NAN, 255},  {36028797018963968.0f, 0},
        {16777216.0f, 0}, {16777218.0f, 255},
    };
    for (const auto& [t, index] : cases)
        EXPECT_EQ(palette.IndexOf(t), index) << t;
}

TEST(ElevationPalette, ARangeOfAFileMovesTheIndexAndCapsTheGetters)
{
    ElevationPalette palette;
    palette.minElevation = 10;
    palette.maxElevation = 100;
    EXPECT_EQ(palette.IndexOf(0.0f), 10);
    EXPECT_EQ(palette.IndexOf(0.5f), 55);
    EXPECT_EQ(palette.IndexOf(1.0f), 100);
    EXPECT_EQ(ColorAt(palette, 101), ColorAt(palette, 100));
}

TEST(ElevationPalette, NoRangeAndNoIndexLeadsPastTheTables)
{
    const std::pair<int, int> ranges[] = {{10, 100},          {-300, 30000}, {100, 10},
                                          {INT_MIN, INT_MAX}, {300, 400},    {-9, -5}};
    for (const auto& [low, high] : ranges) {
        SCOPED_TRACE(low);
        ElevationPalette palette;
        palette.minElevation = low;
        palette.maxElevation = high;
        for (const int index : {-32768, -20, 256, 20000, 32767}) {
            const auto i = static_cast<std::int16_t>(index);
            palette.SetRed(i, 1);
            palette.SetGreen(i, 1);
            palette.SetBlue(i, 1);
            palette.SetNode(i, 1);
            EXPECT_EQ(palette.GetNode(index), 0);
            ColorAt(palette, index);
        }
        palette.Rebuild();
        EXPECT_EQ(ColorAt(palette, 0), (Rgb{0, 136, 0}));
        palette.ResetRamp();
        EXPECT_EQ(palette.red.size() + palette.green.size() + palette.blue.size() + palette.nodeFlags.size(), 4u * 256);
        EXPECT_EQ(palette.red[9], 9);
        EXPECT_EQ(palette.red[static_cast<std::size_t>(std::clamp(high, 0, 255))], 255);
        palette.Rebuild();
        float color[4];
        for (const float t : {-5.0f, 0.0f, 0.5f, 1.0f, 1e30f})
            palette.GetColor(t, color);
    }
    ElevationPalette cut;
    cut.blue.resize(7);
    cut.Rebuild();
    EXPECT_EQ(cut.nodes, std::vector<std::uint8_t>{0});
    EXPECT_EQ(ColorAt(cut, 200)[2], cut.blue[6]);
}

TEST(ElevationPalette, AFallingLineTruncatesBelowItsFirstNode)
{
    ElevationPalette palette;
    palette.ResetRamp();
    palette.SetNode(0, 0);
    palette.SetNode(255, 0);
    palette.SetNode(10, 1);
    palette.SetNode(13, 1);
    palette.SetRed(10, 100);
    palette.SetRed(13, 50);
    palette.Rebuild();
    EXPECT_EQ(palette.red[10], 99);
    EXPECT_EQ(palette.red[11], 82);
    EXPECT_EQ(palette.red[12], 66);
    EXPECT_EQ(palette.red[13], 50);
    EXPECT_EQ(palette.red[9], 9);
    EXPECT_EQ(palette.red[14], 14);
}

TEST(ElevationPalette, OneNodeLeavesTheColoursAlone)
{
    ElevationPalette palette;
    const auto before = palette.red;
    for (const int node : {0, 200, 255})
        palette.SetNode(static_cast<std::int16_t>(node), 0);
    palette.Rebuild();
    EXPECT_EQ(palette.nodes, std::vector<std::uint8_t>{50});
    EXPECT_EQ(palette.red, before);
}

TEST(ElevationPalette, ResetRampIsGreyAndKeepsTheOldNodeList)
{
    ElevationPalette palette;
    palette.ResetRamp();
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(ColorAt(palette, i), (Rgb{i, i, i}));
        EXPECT_EQ(palette.GetNode(i), i == 0 || i == 255 ? 1 : 0);
    }
    EXPECT_EQ(palette.nodes.size(), 4u);
    float color[4];
    palette.GetColor(1.0f, color);
    for (const float channel : color)
        EXPECT_EQ(channel, 1.0f);
}

TEST(ElevationPalette, CloneIsACopyOfItsOwn)
{
    ElevationPalette palette;
    palette.SetRed(7, 42);
    palette.maxElevation = 200;
    ElevationPalette* raw = nullptr;
    palette.Clone(&raw);
    const std::unique_ptr<ElevationPalette> copy(raw);
    palette.SetRed(7, 1);
    EXPECT_EQ(copy->red[7], 42);
    EXPECT_EQ(copy->maxElevation, 200);
}

}  // namespace
