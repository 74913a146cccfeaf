#pragma once

#include "persistence/saved_value.h"
#include "platform/com/bstr.h"
#include "services/parser.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace tessara {

/// What became of a value that was looked for.
enum class Reading {
    Missing,     ///< there is no value of that name
    Unreadable,  ///< there is one, and it can't be delivered or holds nothing usable
    Read,
};

/// Floats beyond it come back as that: products of two settings and an elevation stay finite.
inline constexpr float kLargestSetting = 1e18f;

/// A place in a project, through the parser that stands at it, for one save or load of a group of values. Each value
/// can be written or looked for once.
///
/// All memory that the names take is allocated in the constructor: nothing here fails for want of memory afterwards.
class SavedPlace {
public:
    /// For the values from `first` to `last`. \throws std::bad_alloc
    SavedPlace(IParser& parser, SavedId first, SavedId last);

    void Write(SavedId value, const void* bytes, std::size_t size);

    template <class T>
    void Write(SavedId value, const T& item)
    {
        Write(value, &item, sizeof item);
    }

    /// Writes a text with its terminator, cut where a reader's buffer ends, but not within a character.
    void WriteText(SavedId value, const std::string& text);

    /// \param buffer has the value's size; its content is undefined unless the value was read
    Reading Read(SavedId value, void* buffer);

    /// The same in two steps, for values whose buffer is worth making only when they are there.
    bool Find(SavedId value, ParserNode* node);
    Reading Fetch(SavedId value, ParserNode node, void* buffer);

    /// Reads a 32-bit integer. \param number left alone unless it was read
    Reading ReadInteger(SavedId value, LONG* number);

    /// Reads floats. A value with one that isn't finite is unreadable; those beyond kLargestSetting come back as that.
    /// \param numbers left alone unless they were read
    Reading ReadFloats(SavedId value, std::span<float> numbers);

    /// Reads a text. \param text has room for kTextCapacity bytes, so that nothing is allocated
    Reading ReadText(SavedId value, std::string* text);

private:
    BSTR TakeName(SavedId value);

    IParser& parser_;
    std::size_t first_;
    std::vector<BstrHolder> names_;
};

}  // namespace tessara
