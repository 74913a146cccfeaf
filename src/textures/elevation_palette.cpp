#include "textures/elevation_palette.h"

#include <algorithm>
#include <numeric>

namespace {

using Table = std::vector<std::uint8_t>;

constexpr std::size_t kEntries = 256;

struct Anchor {
    std::uint8_t index;
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
};

constexpr Anchor kDefaultAnchors[] = {{0, 0, 136, 0}, {50, 0, 217, 0}, {200, 135, 67, 67}, {255, 255, 255, 255}};

/// Draws the line between two nodes, up to but not including the second one. The slope is rounded to a float and the
/// products are truncated towards zero, so a falling line can come out one below its first node.
void DrawLine(Table& table, std::int32_t from, std::int32_t to)
{
    const std::int32_t first = table[static_cast<std::size_t>(from)];
    const std::int32_t last = table[static_cast<std::size_t>(to)];
    const float slope = static_cast<float>(static_cast<double>(last - first) / (to - from));
    const std::int32_t offset = first - static_cast<std::int32_t>(from * static_cast<double>(slope));
    for (std::int32_t x = from; x < to; ++x) {
        const auto level = static_cast<std::int32_t>(offset + x * static_cast<double>(slope));
        table[static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(level & 0xFF);
    }
}

}  // namespace

ElevationPalette::ElevationPalette()
{
    for (std::int32_t i = minElevation; i <= maxElevation; ++i) {
        const auto level = static_cast<std::uint8_t>(i);
        red.push_back(level);
        blue.push_back(level);
        green.push_back(level);
        nodeFlags.push_back(0);
    }
    for (const Anchor& anchor : kDefaultAnchors) {
        SetRed(anchor.index, anchor.red);
        SetGreen(anchor.index, anchor.green);
        SetBlue(anchor.index, anchor.blue);
        SetNode(anchor.index, 1);
    }
    Rebuild();
}

ElevationPalette::~ElevationPalette() = default;

void ElevationPalette::Clone(ElevationPalette** copy) const
{
    *copy = new ElevationPalette(*this);
}

void ElevationPalette::SetNode(std::int16_t index, std::uint8_t flag)
{
    if (index <= maxElevation)
        SetEntry(nodeFlags, index, flag);
}

void ElevationPalette::Rebuild()
{
    nodes.clear();
    const auto last =
        static_cast<std::int32_t>(std::min({kEntries, red.size(), green.size(), blue.size(), nodeFlags.size()})) - 1;
    for (std::int32_t i = std::max(minElevation, 0); i <= std::min(maxElevation, last); ++i) {
        if (nodeFlags[static_cast<std::size_t>(i)] == 1)
            nodes.push_back(static_cast<std::uint8_t>(i));
    }
    for (Table* table : {&red, &green, &blue}) {
        for (std::size_t pair = 0; pair + 1 < nodes.size(); ++pair)
            DrawLine(*table, nodes[pair], nodes[pair + 1]);
    }
}

void ElevationPalette::GetColor(float t, float* color) const
{
    constexpr float kByteToUnit = 0.003921569f;  // 0x3B808081: 255 times it is exactly 1.0
    const std::int16_t index = IndexOf(t);
    color[0] = static_cast<float>(GetRed(index)) * kByteToUnit;
    color[1] = static_cast<float>(GetGreen(index)) * kByteToUnit;
    color[2] = static_cast<float>(GetBlue(index)) * kByteToUnit;
    color[3] = 1.0f;
}

void ElevationPalette::ResetRamp()
{
    nodeFlags.assign(kEntries, 0);
    for (Table* table : {&red, &blue, &green}) {
        table->resize(kEntries);
        std::iota(table->begin(), table->end(), std::uint8_t{0});
    }
    const auto top = static_cast<std::size_t>(std::clamp(maxElevation, 0, static_cast<std::int32_t>(kEntries) - 1));
    nodeFlags[0] = 1;
    nodeFlags[top] = 1;
    for (Table* table : {&red, &green, &blue}) {
        (*table)[0] = 0;
        (*table)[top] = 255;
    }
}

std::int16_t ElevationPalette::IndexOfLarge(double scaled) const
{
    if (!std::isfinite(scaled))
        return static_cast<std::int16_t>(maxElevation);
    const double low = std::fmod(std::trunc(scaled), 65536.0);  // exact
    return InRange(static_cast<std::int16_t>(static_cast<std::int32_t>(low)));
}
