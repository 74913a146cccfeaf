#pragma once

#include "platform/com/types.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace tessara {

/// The values of the saved form, each group in the order in which it is written.
enum class SavedId : std::size_t {
    // surface properties
    Lod,
    Translation,
    ElevationScale,
    // matrix
    MinElevation,
    MaxElevation,
    MatrixWidth,
    MatrixHeight,
    MatrixData,
    // palette
    PaletteRed,
    PaletteGreen,
    PaletteBlue,
    PaletteNodes,
    PaletteMin,
    PaletteMax,
    // textures
    SourceWidth,
    SourceHeight,
    SourceData,
    DetailName,
    DetailTable,
    Database,
    DetailDisplayName,
    UsingDetail,
    UsingSource,
    TilingX,
    TilingY,
    RgbGamma,
    SourceBits,
};

/// What the size of a value goes by.
enum class SavedShape {
    Fixed,   ///< always the same
    Text,    ///< 1 byte up to a largest size, the last byte 0
    Matrix,  ///< a float for each cell of MatrixWidth x MatrixHeight
    Image,   ///< SourceWidth x SourceHeight pixels of SourceBits; without a depth of 8, 24 or 32 bits
};

struct SavedValue {
    const char* name;
    LONG written;  ///< type code that the writer gives
    LONG asked;    ///< type code that the reader asks for; the bytes are the same
    SavedShape shape;
    LONG size = 0;  ///< in bytes: of a fixed shape that size, of a text the largest one
};

const SavedValue& ValueOf(SavedId id);

/// \return nothing for a name that no surface saves; names are told apart by case
std::optional<SavedId> FindSavedValue(std::string_view name);

/// Gives another value of the same place, a 32-bit integer, or nothing where there is none of 4 bytes.
using IntegerOf = std::function<std::optional<LONG>(SavedId id)>;

/// Whether a value has the size that its shape calls for. The parser interface passes no capacity, and a reader's
/// buffer is as large as the shape says, so a value of another size must never reach it. No value is larger than 2 GiB.
bool HasSavedSize(SavedId id, std::int64_t size, const IntegerOf& integerOf);

/// Longest text with its terminator, in bytes.
inline constexpr std::size_t kTextCapacity = 1024;

/// Largest block that the parser's 32-bit size can tell.
inline constexpr std::int64_t kLargestBlock = INT32_MAX;

/// Bytes of a block of columns x rows items. \return 0 for sizes that are not positive or whose product is above
/// kLargestBlock
std::size_t BlockSize(LONG columns, LONG rows, std::size_t itemSize);

/// Whether pixels of so many bits can be saved.
constexpr bool IsDepth(LONG bits)
{
    return bits == 8 || bits == 24 || bits == 32;
}

}  // namespace tessara
