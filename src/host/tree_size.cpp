#include "host/tree_size.h"

#include <algorithm>

namespace tessara {

TreeSize MeasureTree(std::int64_t columns, std::int64_t rows) noexcept
{
    std::int64_t side = 2;
    TreeSize size{1, 1};
    while (side < std::max(columns, rows)) {
        side *= 2;
        ++size.levels;
    }
    // A node touches the grid when its origin is not beyond the last column or row by more than one.
    const std::int64_t root = side;
    const auto touching = [root](std::int64_t cells, std::int64_t nodeSide) {
        return std::min(cells / nodeSide + 1, root / nodeSide);
    };
    for (; side > 2; side /= 2)
        size.nodes += 4 * static_cast<std::uint64_t>(touching(columns, side) * touching(rows, side));
    return size;
}

}  // namespace tessara
