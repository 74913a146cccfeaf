#include "persistence/saved_value.h"

#include <algorithm>
#include <iterator>

namespace tessara {

namespace {

constexpr LONG kIntegers = 2;
constexpr LONG kSizes = 8;
constexpr LONG kFloats = 0x10;
constexpr LONG kText = 0x40;
constexpr LONG kBytes = 0x80;
constexpr LONG kPixels = 0x280;
constexpr auto kLongestText = static_cast<LONG>(kTextCapacity);

// The depth of the pixels is written only where it isn't the 32 bits that every reader takes them for, and last, so
// that a reader that doesn't know it finds what it always found.
constexpr SavedValue kValues[] = {
    {"KVOxml_LOD", kFloats, kFloats, SavedShape::Fixed, 4},
    {"TRANSLATION", kFloats, kFloats, SavedShape::Fixed, 12},
    {"ELEVATION_SCALE", kFloats, kFloats, SavedShape::Fixed, 4},

    {"MIN_ELEVATION", kFloats, kFloats, SavedShape::Fixed, 4},
    {"MAX_ELEVATION", kFloats, kFloats, SavedShape::Fixed, 4},
    {"MATRIX_WIDTH", kSizes, kSizes, SavedShape::Fixed, 4},
    {"MATRIX_HEIGHT", kSizes, kSizes, SavedShape::Fixed, 4},
    {"MATRIX_DATA", kFloats, kFloats, SavedShape::Matrix},

    {"PALETTE_INFO_RED", kBytes, kBytes, SavedShape::Fixed, 256},
    {"PALETTE_INFO_GREEN", kBytes, kBytes, SavedShape::Fixed, 256},
    {"PALETTE_INFO_BLUE", kBytes, kBytes, SavedShape::Fixed, 256},
    {"PALETTE_INFO_ARRAY_NODE", kIntegers, kIntegers, SavedShape::Fixed, 1024},
    {"PALETTE_INFO_MIN_ELV", kFloats, kIntegers, SavedShape::Fixed, 4},
    {"PALETTE_INFO_MAX_ELV", kFloats, kIntegers, SavedShape::Fixed, 4},

    {"TEXTURE_SRC_WIDTH", kSizes, kIntegers, SavedShape::Fixed, 4},
    {"TEXTURE_SRC_HEIGHT", kSizes, kIntegers, SavedShape::Fixed, 4},
    {"TEXTURE_SRC_DATA", kPixels, kBytes, SavedShape::Image},
    {"TEXTURE_DET_NAME", kText, kText, SavedShape::Text, kLongestText},
    {"TEXTURE_DET_TABLE", kText, kText, SavedShape::Text, kLongestText},
    {"DATABASE", kText, kText, SavedShape::Text, kLongestText},
    {"TEXTURE_DET_NAME_USER", kText, kText, SavedShape::Text, kLongestText},
    {"IS_USING_DETAIL", kIntegers, kIntegers, SavedShape::Fixed, 4},
    {"IS_USING_SOURCE", kIntegers, kIntegers, SavedShape::Fixed, 4},
    {"DETAIL_TILINGX", kFloats, kFloats, SavedShape::Fixed, 4},
    {"DETAIL_TILINGY", kFloats, kFloats, SavedShape::Fixed, 4},
    {"DETAIL_RGBGAMMA", kIntegers, kIntegers, SavedShape::Fixed, 4},
    {"TEXTURE_SRC_BITS", kIntegers, kIntegers, SavedShape::Fixed, 4},
};
static_assert(std::size(kValues) == static_cast<std::size_t>(SavedId::SourceBits) + 1);

bool IsBlock(std::int64_t size, SavedId width, SavedId height, std::size_t itemSize, const IntegerOf& integerOf)
{
    const std::size_t block = BlockSize(integerOf(width).value_or(0), integerOf(height).value_or(0), itemSize);
    return block != 0 && size == static_cast<std::int64_t>(block);
}

bool IsImage(std::int64_t size, const IntegerOf& integerOf)
{
    const std::optional<LONG> stored = integerOf(SavedId::SourceBits);
    for (const LONG bits : {8, 24, 32}) {
        if ((!stored || *stored == bits) &&
            IsBlock(size, SavedId::SourceWidth, SavedId::SourceHeight, static_cast<std::size_t>(bits / 8), integerOf))
            return true;
    }
    return false;
}

}  // namespace

const SavedValue& ValueOf(SavedId id)
{
    return kValues[static_cast<std::size_t>(id)];
}

std::optional<SavedId> FindSavedValue(std::string_view name)
{
    const auto found = std::find_if(std::begin(kValues), std::end(kValues),
                                    [name](const SavedValue& value) { return value.name == name; });
    if (found == std::end(kValues))
        return std::nullopt;
    return static_cast<SavedId>(found - std::begin(kValues));
}

bool HasSavedSize(SavedId id, std::int64_t size, const IntegerOf& integerOf)
{
    const SavedValue& value = ValueOf(id);
    switch (value.shape) {
    case SavedShape::Fixed:
        return size == value.size;
    case SavedShape::Text:
        return size > 0 && size <= value.size;
    case SavedShape::Matrix:
        return IsBlock(size, SavedId::MatrixWidth, SavedId::MatrixHeight, sizeof(float), integerOf);
    case SavedShape::Image:
        return IsImage(size, integerOf);
    }
    return false;
}

std::size_t BlockSize(LONG columns, LONG rows, std::size_t itemSize)
{
    if (columns <= 0 || rows <= 0)
        return 0;
    const std::int64_t items = std::int64_t{columns} * rows;
    return items <= kLargestBlock / static_cast<std::int64_t>(itemSize) ? static_cast<std::size_t>(items) * itemSize
                                                                        : 0;
}

}  // namespace tessara
