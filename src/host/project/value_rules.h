#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace tessara {

/// Size that the value of a name has in a project. The parser interface passes no capacity: a reader's buffer is as
/// large as the name says, so a value of another size must never reach it.
enum class ValueShape {
    Fixed,   ///< always the same size
    Text,    ///< 1 to 1024 bytes, the last one 0
    Matrix,  ///< a float for each cell of MATRIX_WIDTH x MATRIX_HEIGHT
    Image,   ///< TEXTURE_SRC_WIDTH x TEXTURE_SRC_HEIGHT pixels of TEXTURE_SRC_BITS; without a depth of 8, 24 or 32 bits
    Unknown,  ///< a name of somebody else's
};

struct ValueRule {
    std::string_view name;
    ValueShape shape = ValueShape::Unknown;
    std::int64_t size = 0;  ///< in bytes: of a fixed shape that size, of a text the largest one
};

ValueRule RuleOf(std::string_view name);

/// Gives another value of the same place, a 32-bit integer, or nothing where there is none of 4 bytes.
using IntegerOf = std::function<std::optional<std::int32_t>(std::string_view name)>;

/// Whether a value of this size is what the rule calls for. Says yes to no value of an unknown shape, or larger than
/// 2 GiB.
bool HasSize(const ValueRule& rule, std::int64_t size, const IntegerOf& integerOf);

}  // namespace tessara
