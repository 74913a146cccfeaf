#pragma once

#include "platform/com/types.h"

class ElevationPalette;
struct IParser;

namespace tessara {

/// A palette as it is saved.
struct SavedPalette {
    static constexpr std::int16_t kEntries = 256;

    BYTE red[kEntries] = {};
    BYTE green[kEntries] = {};
    BYTE blue[kEntries] = {};
    LONG node[kEntries] = {};
    float low = 0.0f;
    float high = 0.0f;

    static SavedPalette Of(const ElevationPalette& palette);

    /// Stores the entries and the range, the latter truncated towards zero, in a palette, whatever range that
    /// is: a palette bears any. Its lines aren't drawn anew.
    /// \throws std::bad_alloc, with the palette as it was
    void GiveTo(ElevationPalette& palette) const;

    /// \return false where one of the six values isn't there; then nothing of the rest counts \throws std::bad_alloc
    bool Read(IParser& parser);

    /// \throws std::bad_alloc before anything is written
    void Write(IParser& parser) const;
};

}  // namespace tessara
