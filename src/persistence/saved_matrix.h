#pragma once

#include "platform/com/types.h"

#include <optional>
#include <vector>

struct IParser;

namespace tessara {

class SavedPlace;

/// A height field as it is saved.
struct SavedMatrix {
    LONG width = 0;  ///< columns, positive; 0 where there is no usable size
    LONG height = 0;
    std::optional<float> minimum;   ///< what the elevation 0.0 stands for
    std::optional<float> maximum;   ///< what the elevation 1.0 stands for
    std::vector<float> elevations;  ///< row by row, columns fastest

    /// \return whether the elevations are there. Without them the rest may be; without a size nothing is. Elevations
    /// are such that a tree can be built on them: 0 for what isn't finite, +-1e9 for what is beyond
    /// \throws std::bad_alloc
    bool Read(IParser& parser);

    /// The same without the elevations. \return whether there is a size
    bool ReadFrame(IParser& parser);

    /// \throws std::bad_alloc before anything is written
    void Write(IParser& parser) const;

private:
    bool ReadFrame(SavedPlace& place);
};

}  // namespace tessara
