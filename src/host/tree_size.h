#pragma once

#include <cstdint>

namespace tessara {

/// Size of the quadtree that a terrain has after its build, at full detail. The build may add a few nodes past the
/// grid's edge, by which it keeps neighbours in step.
struct TreeSize {
    int levels = 0;           ///< levels of nodes, the root's included
    std::uint64_t nodes = 0;  ///< nodes of all levels
};

/// The root covers the grid with the next power of two; every node above the lowest level that touches the grid has its
/// four children. \param columns,rows from 1 to 2^30
TreeSize MeasureTree(std::int64_t columns, std::int64_t rows) noexcept;

}  // namespace tessara
