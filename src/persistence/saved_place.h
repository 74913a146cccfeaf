#pragma once

#include "platform/com/bstr.h"
#include "services/parser.h"

#include <cstddef>
#include <initializer_list>
#include <span>
#include <vector>

namespace tessara {

/// A value of the saved form: its name, and the type code that the writer gives and the one that the reader asks for.
struct SavedValue {
    const char* name;
    LONG written;
    LONG asked;
};

/// Type codes of the saved form.
inline constexpr LONG kIntegers = 2;
inline constexpr LONG kSizes = 8;
inline constexpr LONG kFloats = 0x10;
inline constexpr LONG kText = 0x40;
inline constexpr LONG kBytes = 0x80;
inline constexpr LONG kPixels = 0x280;

/// What became of a value that was looked for.
enum class Reading {
    Missing,     ///< there is no value of that name
    Unreadable,  ///< there is one, and it can't be delivered or holds nothing usable
    Read,
};

/// A place in a project, through the parser that stands at it, for one save or load of a group of values. A value is
/// named by its index in the group and can be written or looked for once.
///
/// All memory that the names take is allocated in the constructor: nothing here fails for want of memory afterwards.
class SavedPlace {
public:
    /// \param parser IParser \throws std::bad_alloc
    SavedPlace(IUnknown* parser, std::span<const SavedValue> values);

    void Write(std::size_t value, const void* bytes, std::size_t size);

    /// \param buffer has the value's size; its content is undefined unless the value was read
    Reading Read(std::size_t value, void* buffer);

    /// The same in two steps, for values whose buffer is worth making only when they are there.
    bool Find(std::size_t value, ParserNode* node);
    Reading Fetch(std::size_t value, ParserNode node, void* buffer);

    /// Reads a 32-bit integer. \param number left alone unless it was read
    Reading ReadInteger(std::size_t value, LONG* number);

    /// Reads floats. A value with one that isn't finite is unreadable; those beyond kLargestSetting come back as that.
    /// \param numbers left alone unless they were read
    Reading ReadFloats(std::size_t value, std::span<float> numbers);

private:
    IParser& parser_;
    std::span<const SavedValue> values_;
    std::vector<BstrHolder> names_;
};

/// Products of two settings and an elevation stay finite within these bounds.
inline constexpr float kLargestSetting = 1e18f;
inline constexpr float kLargestElevation = 1e9f;

/// Largest block that the parser's 32-bit size can tell.
inline constexpr std::int64_t kLargestBlock = INT32_MAX;

/// Bytes of a block of columns x rows items. \return 0 for sizes that are not positive or whose product is above
/// kLargestBlock
std::size_t BlockSize(LONG columns, LONG rows, std::size_t itemSize);

}  // namespace tessara
