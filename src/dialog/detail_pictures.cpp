#include "dialog/detail_pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tessara {

namespace {

struct Color {
    float red, green, blue;
};

Color Mix(const Color& from, const Color& to, float share)
{
    const float t = std::clamp(share, 0.0f, 1.0f);
    return {from.red + (to.red - from.red) * t, from.green + (to.green - from.green) * t,
            from.blue + (to.blue - from.blue) * t};
}

void Put(std::uint8_t* pixel, const Color& color)
{
    pixel[0] = static_cast<std::uint8_t>(std::lround(color.red));
    pixel[1] = static_cast<std::uint8_t>(std::lround(color.green));
    pixel[2] = static_cast<std::uint8_t>(std::lround(color.blue));
    pixel[3] = 255;
}

constexpr Color kWhite = {255, 255, 255};
constexpr int kSideWidth = 60;
constexpr int kSideHeight = 200;

/// One chain of mountains: where its crest runs, and its colours there and further down.
struct Ridge {
    float level;  // of the crest, in rows from the top
    float size;   // of its peaks, in rows
    float phase;
    Color crest;
    Color foot;
};

constexpr Ridge kRidges[] = {
    {70, 20, 0.4f, {158, 178, 205}, {198, 208, 220}},
    {92, 17, 2.9f, {112, 142, 170}, {166, 186, 196}},
    {116, 14, 5.2f, {78, 118, 122}, {134, 164, 150}},
    {142, 11, 1.7f, {58, 98, 74}, {148, 172, 118}},
};

/// Peaks at several sizes: folded waves have sharp crests.
float CrestAt(const Ridge& ridge, float x)
{
    const float wide = 1.0f - std::abs(std::sin(x * 0.045f + ridge.phase));
    const float middle = 1.0f - std::abs(std::sin(x * 0.13f + ridge.phase * 2.3f));
    const float fine = std::sin(x * 0.51f + ridge.phase * 5.1f) + std::sin(x * 0.83f + ridge.phase);
    return ridge.level - ridge.size * (wide + 0.42f * middle + 0.06f * fine);
}

Color SkyAt(float y)
{
    const Color zenith = {52, 96, 158};
    const Color middle = {142, 182, 220};
    const Color horizon = {250, 228, 196};
    return y < 45.0f ? Mix(zenith, middle, y / 45.0f) : Mix(middle, horizon, (y - 45.0f) / 35.0f);
}

/// A slope under its crest, with contour lines that follow it.
Color SlopeAt(const Ridge& ridge, float below)
{
    const Color ground = Mix(ridge.crest, ridge.foot, below / 45.0f);
    const float line = std::abs(std::remainder(below - 3.5f, 7.0f));
    return Mix(ground, kWhite, line < 0.8f ? 0.16f : 0.0f);
}

// '.' is transparent; letters are colours of kIconColors.
constexpr std::array<std::string_view, 16> kIconRows = {
    "................................................", "..rr........rr.........bb.....................g.",
    ".rRRr......rRRr.......bBBb...................gG.", ".rRRRr....rRRRr.......bBBb..................gGG.",
    "..rRRRr..rRRRr........bBBb.................gGGg.", "...rRRRrrRRRr.........bBBb................gGGg..",
    "....rRRRRRRr.......bbbbBBbbbb............gGGg...", ".....rRRRRr........bBBBBBBBBb...........gGGg....",
    ".....rRRRRr.........bBBBBBBb...gg......gGGg.....", "....rRRRRRRr.........bBBBBb....gGg....gGGg......",
    "...rRRRrrRRRr.........bBBb.....gGGg..gGGg.......", "..rRRRr..rRRRr.........bb.......gGGggGGg........",
    ".rRRRr....rRRRr..kk..........kk..gGGGGg.........", ".rRRr......rRRr..kK..........Kk...gGGg..........",
    "..rr........rr...kkkkkkkkkkkkkk....gg...........", "................................................",
};

constexpr int kStripWidth = 74;
constexpr Color kMask = {236, 233, 216};

Color IconColor(char letter)
{
    switch (letter) {
    case 'r':
        return {150, 28, 24};
    case 'R':
        return {214, 62, 52};
    case 'b':
        return {24, 70, 134};
    case 'B':
        return {72, 136, 210};
    case 'g':
        return {22, 104, 42};
    case 'G':
        return {66, 170, 84};
    case 'k':
        return {70, 74, 82};
    case 'K':
        return {132, 136, 144};
    default:
        return kMask;
    }
}

}  // namespace

Image MakeSidePicture()
{
    Image picture(kSideWidth, kSideHeight);
    for (int row = 0; row < kSideHeight; ++row) {
        for (int column = 0; column < kSideWidth; ++column) {
            const auto y = static_cast<float>(row);
            Color color = SkyAt(y);
            for (const Ridge& ridge : kRidges) {
                const float below = y - CrestAt(ridge, static_cast<float>(column));
                color = Mix(color, SlopeAt(ridge, std::max(below, 0.0f)), below + 0.5f);
            }
            Put(picture.At(column, row), Mix(color, kWhite, (y - 150.0f) / 49.0f));
        }
    }
    return picture;
}

Image MakeIconStrip()
{
    Image strip(kStripWidth, static_cast<int>(kIconRows.size()));
    for (int y = 0; y < strip.height; ++y) {
        const std::string_view row = kIconRows[static_cast<std::size_t>(y)];
        for (int x = 0; x < strip.width; ++x)
            Put(strip.At(x, y),
                IconColor(static_cast<std::size_t>(x) < row.size() ? row[static_cast<std::size_t>(x)] : '.'));
    }
    return strip;
}

}  // namespace tessara
