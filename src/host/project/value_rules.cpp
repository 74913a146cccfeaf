#include "host/project/value_rules.h"

#include <algorithm>
#include <iterator>

namespace tessara {

namespace {

constexpr std::int64_t kTextSize = 1024;

constexpr ValueRule kRules[] = {
    {"KVOxml_LOD", ValueShape::Fixed, 4},
    {"TRANSLATION", ValueShape::Fixed, 12},
    {"ELEVATION_SCALE", ValueShape::Fixed, 4},
    {"MIN_ELEVATION", ValueShape::Fixed, 4},
    {"MAX_ELEVATION", ValueShape::Fixed, 4},
    {"MATRIX_WIDTH", ValueShape::Fixed, 4},
    {"MATRIX_HEIGHT", ValueShape::Fixed, 4},
    {"MATRIX_DATA", ValueShape::Matrix},
    {"PALETTE_INFO_RED", ValueShape::Fixed, 256},
    {"PALETTE_INFO_GREEN", ValueShape::Fixed, 256},
    {"PALETTE_INFO_BLUE", ValueShape::Fixed, 256},
    {"PALETTE_INFO_ARRAY_NODE", ValueShape::Fixed, 1024},
    {"PALETTE_INFO_MIN_ELV", ValueShape::Fixed, 4},
    {"PALETTE_INFO_MAX_ELV", ValueShape::Fixed, 4},
    {"TEXTURE_SRC_WIDTH", ValueShape::Fixed, 4},
    {"TEXTURE_SRC_HEIGHT", ValueShape::Fixed, 4},
    {"TEXTURE_SRC_BITS", ValueShape::Fixed, 4},
    {"TEXTURE_SRC_DATA", ValueShape::Image},
    {"TEXTURE_DET_NAME", ValueShape::Text, kTextSize},
    {"TEXTURE_DET_TABLE", ValueShape::Text, kTextSize},
    {"DATABASE", ValueShape::Text, kTextSize},
    {"TEXTURE_DET_NAME_USER", ValueShape::Text, kTextSize},
    {"IS_USING_DETAIL", ValueShape::Fixed, 4},
    {"IS_USING_SOURCE", ValueShape::Fixed, 4},
    {"DETAIL_TILINGX", ValueShape::Fixed, 4},
    {"DETAIL_TILINGY", ValueShape::Fixed, 4},
    {"DETAIL_RGBGAMMA", ValueShape::Fixed, 4},
};

/// Tells whether a block holds width x height items of a size, none of them empty.
bool IsBlock(std::int64_t size, std::string_view width, std::string_view height, std::int64_t itemSize,
             const IntegerOf& integerOf)
{
    const std::int64_t columns = integerOf(width).value_or(0);
    const std::int64_t rows = integerOf(height).value_or(0);
    return columns > 0 && rows > 0 && columns <= INT32_MAX / rows && size == columns * rows * itemSize;
}

bool IsImage(std::int64_t size, const IntegerOf& integerOf)
{
    const std::optional<std::int32_t> stored = integerOf("TEXTURE_SRC_BITS");
    for (const std::int32_t bits : {8, 24, 32}) {
        if ((!stored || *stored == bits) &&
            IsBlock(size, "TEXTURE_SRC_WIDTH", "TEXTURE_SRC_HEIGHT", bits / 8, integerOf))
            return true;
    }
    return false;
}

}  // namespace

ValueRule RuleOf(std::string_view name)
{
    const auto found =
        std::find_if(std::begin(kRules), std::end(kRules), [name](const ValueRule& rule) { return rule.name == name; });
    return found == std::end(kRules) ? ValueRule{name} : *found;
}

bool HasSize(const ValueRule& rule, std::int64_t size, const IntegerOf& integerOf)
{
    if (size <= 0 || size > INT32_MAX)
        return false;
    switch (rule.shape) {
    case ValueShape::Fixed:
        return size == rule.size;
    case ValueShape::Text:
        return size <= rule.size;
    case ValueShape::Matrix:
        return IsBlock(size, "MATRIX_WIDTH", "MATRIX_HEIGHT", sizeof(float), integerOf);
    case ValueShape::Image:
        return IsImage(size, integerOf);
    default:
        return false;
    }
}

}  // namespace tessara
