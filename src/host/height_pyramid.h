#pragma once

#include "../textures/elevation_element.h"

#include <cstddef>
#include <vector>

namespace tessara {

/// The least and the greatest elevation of square blocks of a grid, of every size: what a search over the ground needs
/// that can't look at each point.
///
/// A block of level n spans 2^n cells a side, of which those past the grid's end are left out; a cell lies between four
/// points. Level 0 is the cells, and the only block of the last level is the whole grid.
class HeightPyramid {
public:
    struct Range {
        float low = 0.0f;
        float high = 0.0f;
    };

    /// \param grid row-major elements, `columns` a row; it outlives this object \param columns,rows positive
    /// \param border points that are left out along each edge of the grid; all places are counted without them
    HeightPyramid(const ElevationElement* grid, int columns, int rows, int border = 0);

    /// Elevations have changed, of points from left and top up to, without, right and bottom.
    void Update(int left, int top, int right, int bottom);

    int Border() const noexcept { return border_; }
    int Levels() const noexcept { return kFirst + static_cast<int>(levels_.size()); }

    /// Cells from west to east and from north to south; a single row or column of points counts as one.
    int CellColumns() const noexcept { return cellColumns_; }
    int CellRows() const noexcept { return cellRows_; }

    /// \param column,row of the block among those of its level
    Range At(int level, int column, int row) const;

private:
    struct Level {
        int columns = 0;
        int rows = 0;
        std::vector<Range> blocks;
    };

    static constexpr int kFirst = 2;  // smaller blocks are looked up in the grid

    Range Scan(int left, int top, int right, int bottom) const;
    void Renew(std::size_t level, int column, int row);

    const ElevationElement* grid_;  // without the border
    int stride_;
    int border_;
    int columns_;
    int rows_;
    int cellColumns_;
    int cellRows_;
    std::vector<Level> levels_;  // from kFirst on
};

}  // namespace tessara
