#include "app/view/palettes.h"

#include <array>
#include <cstdint>
#include <span>

namespace tessara {

namespace {

/// A colour of the ramp at a table index, which is a height from 0 (lowest) to 255 (highest).
struct Stop {
    std::int16_t index;
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
};

constexpr std::array kNatural = {Stop{0, 74, 104, 56},     Stop{26, 98, 122, 62},   Stop{70, 136, 142, 84},
                                 Stop{115, 168, 152, 108}, Stop{160, 146, 124, 98}, Stop{205, 142, 132, 124},
                                 Stop{230, 206, 206, 208}, Stop{255, 252, 252, 255}};

constexpr std::array kDesert = {Stop{0, 196, 164, 112}, Stop{60, 190, 140, 88},   Stop{120, 164, 104, 68},
                                Stop{180, 132, 84, 62}, Stop{225, 172, 142, 116}, Stop{255, 232, 214, 190}};

constexpr std::array kGrey = {Stop{0, 70, 70, 70}, Stop{255, 245, 245, 245}};

std::unique_ptr<ElevationPalette> Ramp(std::span<const Stop> stops)
{
    auto palette = std::make_unique<ElevationPalette>();
    for (std::int16_t index = 0; index < 256; ++index)
        palette->SetNode(index, 0);
    for (const Stop& stop : stops) {
        palette->SetNode(stop.index, 1);
        palette->SetRed(stop.index, stop.red);
        palette->SetGreen(stop.index, stop.green);
        palette->SetBlue(stop.index, stop.blue);
    }
    palette->Rebuild();
    return palette;
}

}  // namespace

std::vector<std::string> PaletteNames()
{
    return {"natural", "classic", "desert", "grey"};
}

std::unique_ptr<ElevationPalette> MakePalette(const std::string& name)
{
    if (name == "natural")
        return Ramp(kNatural);
    if (name == "desert")
        return Ramp(kDesert);
    if (name == "grey")
        return Ramp(kGrey);
    return std::make_unique<ElevationPalette>();
}

}  // namespace tessara
