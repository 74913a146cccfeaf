#include "app/view/height_colors.h"

#include "app/view/palettes.h"
#include "app/view/sea.h"
#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <cmath>

namespace tessara {

ElevationPalette RampOf(const HeightColors& colors)
{
    return colors.ramp.empty() && colors.own ? *colors.own : *MakePalette(colors.ramp);
}

namespace {

constexpr std::array<double, 3> kDeep{14.0, 42.0, 92.0};
constexpr std::array<double, 3> kMiddle{34.0, 86.0, 140.0};
constexpr std::array<double, 3> kShallow{72.0, 136.0, 174.0};

/// From the deepest to the shore, where most changes.
HeightTable::Color SeaColor(double share)
{
    HeightTable::Color color{};
    const bool deep = share < 0.6;
    const double t = deep ? share / 0.6 : (share - 0.6) / 0.4;
    for (std::size_t i = 0; i < 3; ++i)
        color[i] = static_cast<std::uint8_t>(
            std::lround(deep ? kDeep[i] + (kMiddle[i] - kDeep[i]) * t : kMiddle[i] + (kShallow[i] - kMiddle[i]) * t));
    return color;
}

HeightTable::Span SpanBetween(double low, double high)
{
    return {low, 255.0 / std::max(high - low, 1e-6)};
}

}  // namespace

HeightTable::HeightTable(const HeightColors& colors)
    : sea_(colors.sea),
      land_(SpanBetween(sea_ && !colors.ramp.empty() ? std::clamp(*sea_, colors.low, colors.high) : colors.low,
                        colors.high)),
      water_(SpanBetween(sea_ ? std::min(colors.low, *sea_ - 1.0) : colors.low, sea_.value_or(colors.high)))
{
    const ElevationPalette ramp = RampOf(colors);
    for (std::int16_t entry = 0; entry < 256; ++entry) {
        const auto index = static_cast<std::size_t>(entry);
        colors_[index] = SeaColor(entry / 255.0);
        colors_[256 + index] = {static_cast<std::uint8_t>(ramp.GetRed(entry)),
                                static_cast<std::uint8_t>(ramp.GetGreen(entry)),
                                static_cast<std::uint8_t>(ramp.GetBlue(entry))};
    }
}

std::vector<std::uint8_t> MapOfHeights(const ElevationData& data, const HeightColors& colors, const Sea* sea, int width,
                                       int height)
{
    const HeightTable table(colors);
    std::vector<std::uint8_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    const auto source = [](int index, int count, int from) {
        return (2 * static_cast<std::size_t>(index) + 1) * static_cast<std::size_t>(from) /
               (2 * static_cast<std::size_t>(count));
    };
    for (int y = 0; y < height; ++y) {
        const std::size_t row = source(y, height, data.height) * static_cast<std::size_t>(data.width);
        for (int x = 0; x < width; ++x) {
            const std::size_t cell = row + source(x, width, data.width);
            const float metres = data.metres[cell];
            const HeightTable::Color color = sea && sea->Covers(cell, metres)
                                                 ? table.WaterAt(static_cast<double>(metres))
                                                 : table.LandAt(static_cast<double>(metres));
            pixels.insert(pixels.end(), color.begin(), color.end());
        }
    }
    return pixels;
}

void ColorPalette(ElevationPalette& target, double bottom, double top, const HeightColors& colors)
{
    const HeightTable table(colors);
    const ElevationPalette ramp = RampOf(colors);
    const double range = std::max(colors.high - colors.low, 1e-6);
    for (std::int16_t index = 0; index < 256; ++index) {
        const double metres = bottom + (top - bottom) * index / 255.0;
        const double share = std::clamp((metres - colors.low) / range, 0.0, 1.0);
        if (colors.sea) {
            const HeightTable::Color color = table.At(metres);
            target.SetRed(index, color[0]);
            target.SetGreen(index, color[1]);
            target.SetBlue(index, color[2]);
            continue;
        }
        const auto source = static_cast<std::int16_t>(std::lround(share * 255.0));
        target.SetRed(index, ramp.GetRed(source));
        target.SetGreen(index, ramp.GetGreen(source));
        target.SetBlue(index, ramp.GetBlue(source));
    }
}

}  // namespace tessara
