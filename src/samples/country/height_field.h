#pragma once

#include <cstddef>
#include <vector>

namespace tessara {

/// Heights on a square grid over a square of places.
struct HeightField {
    int size = 0;                ///< cells along an edge
    double first = 0.0;          ///< place of the first column and of the first row
    double step = 1.0;           ///< from one to the next
    std::vector<float> heights;  ///< row-major

    double Place(int index) const { return first + index * step; }
    std::size_t Index(int column, int row) const
    {
        return static_cast<std::size_t>(column) + static_cast<std::size_t>(row) * static_cast<std::size_t>(size);
    }

    /// Height at a place, on a smooth curve through the heights around it; places outside get those of the edge.
    double Sample(double x, double y) const;
};

}  // namespace tessara
