#include "persistence/saved_palette.h"

#include "persistence/saved_place.h"
#include "textures/elevation_palette.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace tessara {

namespace {

/// Truncated towards zero; what no integer can tell becomes the nearest one, and what is no number 0.
std::int32_t Truncated(float saved)
{
    constexpr float kBeyond = 2147483648.0f;
    if (std::isnan(saved))
        return 0;
    if (saved >= kBeyond)
        return INT32_MAX;
    return saved < -kBeyond ? INT32_MIN : static_cast<std::int32_t>(saved);
}

/// Gives a palette whose tables were cut to a narrower range all of its entries. \throws std::bad_alloc, before any
/// table has changed
void CompleteTables(ElevationPalette& palette)
{
    std::vector<std::uint8_t>* const tables[] = {&palette.red, &palette.green, &palette.blue, &palette.nodeFlags};
    for (std::vector<std::uint8_t>* table : tables)
        table->reserve(SavedPalette::kEntries);
    for (std::vector<std::uint8_t>* table : tables) {
        if (table->size() < SavedPalette::kEntries)
            table->resize(SavedPalette::kEntries);
    }
}

}  // namespace

SavedPalette SavedPalette::Of(const ElevationPalette& palette)
{
    SavedPalette saved;
    const auto flags = static_cast<std::int32_t>(palette.nodeFlags.size());
    for (std::int16_t i = 0; i < kEntries; ++i) {
        saved.red[i] = palette.GetRed(i);
        saved.green[i] = palette.GetGreen(i);
        saved.blue[i] = palette.GetBlue(i);
        saved.node[i] = i < flags ? palette.GetNode(i) : 0;
    }
    saved.low = static_cast<float>(palette.minElevation);
    saved.high = static_cast<float>(palette.maxElevation);
    return saved;
}

void SavedPalette::GiveTo(ElevationPalette& palette) const
{
    CompleteTables(palette);
    for (std::int16_t i = 0; i < kEntries; ++i) {
        palette.SetRed(i, red[i]);
        palette.SetGreen(i, green[i]);
        palette.SetBlue(i, blue[i]);
        palette.SetNode(i, node[i] != 0 ? 1 : 0);
    }
    palette.minElevation = Truncated(low);
    palette.maxElevation = Truncated(high);
}

bool SavedPalette::Read(IParser& parser)
{
    SavedPlace place(parser, SavedId::PaletteRed, SavedId::PaletteMax);
    return place.Read(SavedId::PaletteRed, red) == Reading::Read &&
           place.Read(SavedId::PaletteGreen, green) == Reading::Read &&
           place.Read(SavedId::PaletteBlue, blue) == Reading::Read &&
           place.Read(SavedId::PaletteNodes, node) == Reading::Read &&
           place.Read(SavedId::PaletteMin, &low) == Reading::Read &&
           place.Read(SavedId::PaletteMax, &high) == Reading::Read;
}

void SavedPalette::Write(IParser& parser) const
{
    SavedPlace place(parser, SavedId::PaletteRed, SavedId::PaletteMax);
    place.Write(SavedId::PaletteRed, red);
    place.Write(SavedId::PaletteGreen, green);
    place.Write(SavedId::PaletteBlue, blue);
    place.Write(SavedId::PaletteNodes, node);
    place.Write(SavedId::PaletteMin, low);
    place.Write(SavedId::PaletteMax, high);
}

}  // namespace tessara
