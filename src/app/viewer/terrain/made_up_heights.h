#pragma once

#include "app/view/light_map.h"

#include <cstddef>
#include <vector>

namespace tessara {

struct ElevationData;

/// The heights that stand in for data a terrain doesn't have, to tell which of these cells somebody has worked at: a
/// cell whose height is another one has data, until it gets the made-up one back.
class MadeUpHeights {
public:
    /// \param data as it was read, with its holes
    explicit MadeUpHeights(const ElevationData& data);

    /// Brings the holes of an area in step with its heights.
    void MarkHoles(ElevationData& data, const GridArea& area) const;

private:
    struct Cell {
        std::size_t index;
        float metres;
    };
    std::vector<Cell> cells_;  // by index
};

}  // namespace tessara
