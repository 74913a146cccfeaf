#include "persistence/saved_place.h"
#include "services/elevation_matrix.h"
#include "surface/co_tessara.h"
#include "textures/elevation_palette.h"

#include <cmath>
#include <vector>

using tessara::Reading;

namespace {

constexpr std::int16_t kEntries = 256;

// The type codes of the range differ between writer and reader: the bytes are those of a float all the same.
constexpr tessara::SavedValue kPaletteValues[] = {
    {"PALETTE_INFO_RED", tessara::kBytes, tessara::kBytes},
    {"PALETTE_INFO_GREEN", tessara::kBytes, tessara::kBytes},
    {"PALETTE_INFO_BLUE", tessara::kBytes, tessara::kBytes},
    {"PALETTE_INFO_ARRAY_NODE", tessara::kIntegers, tessara::kIntegers},
    {"PALETTE_INFO_MIN_ELV", tessara::kFloats, tessara::kIntegers},
    {"PALETTE_INFO_MAX_ELV", tessara::kFloats, tessara::kIntegers},
};

/// A palette in the form in which it is saved.
struct SavedPalette {
    BYTE red[kEntries] = {};
    BYTE green[kEntries] = {};
    BYTE blue[kEntries] = {};
    LONG node[kEntries] = {};
    float low = 0.0f;
    float high = 0.0f;

    struct Block {
        void* bytes;
        std::size_t size;
    };
    /// The six values in the order of kPaletteValues.
    void Blocks(Block (&blocks)[6])
    {
        blocks[0] = {red, sizeof red};
        blocks[1] = {green, sizeof green};
        blocks[2] = {blue, sizeof blue};
        blocks[3] = {node, sizeof node};
        blocks[4] = {&low, sizeof low};
        blocks[5] = {&high, sizeof high};
    }
};

/// Truncated towards zero and brought into the table. \param nearest stands in for what is no number
std::int32_t TableIndex(float saved, std::int32_t nearest)
{
    if (std::isnan(saved))
        return nearest;
    if (saved <= 0.0f)
        return 0;
    return saved >= 255.0f ? 255 : static_cast<std::int32_t>(saved);
}

/// Stores the range, or the whole table where the ends come in the wrong order.
void SetRange(ElevationPalette& palette, const SavedPalette& saved)
{
    palette.minElevation = TableIndex(saved.low, 0);
    palette.maxElevation = TableIndex(saved.high, 255);
    if (palette.minElevation > palette.maxElevation) {
        palette.minElevation = 0;
        palette.maxElevation = 255;
    }
}

/// Gives a palette whose tables were cut to a narrower range all of its entries. \throws std::bad_alloc, before any
/// table has changed
void CompleteTables(ElevationPalette& palette)
{
    std::vector<std::uint8_t>* const tables[] = {&palette.red, &palette.green, &palette.blue, &palette.nodeFlags};
    for (std::vector<std::uint8_t>* table : tables)
        table->reserve(kEntries);
    for (std::vector<std::uint8_t>* table : tables) {
        if (table->size() < kEntries)
            table->resize(kEntries);
    }
}

}  // namespace

HRESULT CoTessara::SerializePalette(IUnknown* pIParser)
{
    if (!pIParser)
        return E_FAIL;
    if (!m_pMatrix)
        return S_OK;
    ElevationPalette* palette = nullptr;
    m_pMatrix->GetPalette(&palette);
    if (!palette)
        return E_FAIL;
    return Guard(
        [&] {
            SavedPalette saved;
            const auto flags = static_cast<std::int32_t>(palette->nodeFlags.size());
            for (std::int16_t i = 0; i < kEntries; ++i) {
                saved.red[i] = palette->GetRed(i);
                saved.green[i] = palette->GetGreen(i);
                saved.blue[i] = palette->GetBlue(i);
                saved.node[i] = i < flags ? palette->GetNode(i) : 0;
            }
            saved.low = static_cast<float>(palette->minElevation);
            saved.high = static_cast<float>(palette->maxElevation);
            SavedPalette::Block blocks[6];
            saved.Blocks(blocks);
            tessara::SavedPlace place(pIParser, kPaletteValues);
            for (std::size_t i = 0; i < std::size(blocks); ++i)
                place.Write(i, blocks[i].bytes, blocks[i].size);
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::LoadSerializedPalette(IUnknown* pIParser)
{
    if (!pIParser || !m_pMatrix)
        return E_FAIL;
    ElevationPalette* palette = nullptr;
    m_pMatrix->GetPalette(&palette);
    if (!palette)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            SavedPalette saved;
            SavedPalette::Block blocks[6];
            saved.Blocks(blocks);
            tessara::SavedPlace place(pIParser, kPaletteValues);
            for (std::size_t i = 0; i < std::size(blocks); ++i) {
                if (place.Read(i, blocks[i].bytes) != Reading::Read)
                    return S_OK;
            }
            CompleteTables(*palette);
            for (std::int16_t i = 0; i < kEntries; ++i) {
                palette->SetRed(i, saved.red[i]);
                palette->SetGreen(i, saved.green[i]);
                palette->SetBlue(i, saved.blue[i]);
                palette->SetNode(i, saved.node[i] != 0 ? 1 : 0);
            }
            SetRange(*palette, saved);
            return S_OK;
        },
        E_FAIL);
}
