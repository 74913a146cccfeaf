#include "host/height_pyramid.h"

#include <algorithm>

namespace tessara {

namespace {

int BlocksOver(int cells, int level)
{
    return static_cast<int>((static_cast<long long>(cells) + (1LL << level) - 1) >> level);
}

HeightPyramid::Range Joined(const HeightPyramid::Range& a, const HeightPyramid::Range& b)
{
    return {std::min(a.low, b.low), std::max(a.high, b.high)};
}

}  // namespace

HeightPyramid::HeightPyramid(const ElevationElement* grid, int columns, int rows, int border)
    : grid_(grid + static_cast<std::ptrdiff_t>(border) * columns + border),
      stride_(columns),
      border_(border),
      columns_(columns - 2 * border),
      rows_(rows - 2 * border),
      cellColumns_(std::max(columns_ - 1, 1)),
      cellRows_(std::max(rows_ - 1, 1))
{
    do {
        const int level = Levels();
        Level& blocks = levels_.emplace_back(BlocksOver(cellColumns_, level), BlocksOver(cellRows_, level));
        blocks.blocks.resize(static_cast<std::size_t>(blocks.columns) * static_cast<std::size_t>(blocks.rows));
    } while (levels_.back().blocks.size() > 1);
    Update(0, 0, columns_, rows_);
}

void HeightPyramid::Update(int left, int top, int right, int bottom)
{
    // A point belongs to the cells on all sides of it.
    int firstColumn = std::max(left - 1, 0) >> kFirst;
    int firstRow = std::max(top - 1, 0) >> kFirst;
    int lastColumn = std::min(right - 1, cellColumns_ - 1) >> kFirst;
    int lastRow = std::min(bottom - 1, cellRows_ - 1) >> kFirst;
    for (std::size_t level = 0; level < levels_.size(); ++level) {
        for (int row = firstRow; row <= lastRow; ++row) {
            for (int column = firstColumn; column <= lastColumn; ++column)
                Renew(level, column, row);
        }
        firstColumn >>= 1;
        firstRow >>= 1;
        lastColumn >>= 1;
        lastRow >>= 1;
    }
}

HeightPyramid::Range HeightPyramid::At(int level, int column, int row) const
{
    if (level < kFirst)
        return Scan(column << level, row << level, (column + 1) << level, (row + 1) << level);
    const Level& blocks = levels_[static_cast<std::size_t>(level - kFirst)];
    return blocks.blocks[static_cast<std::size_t>(column) +
                         static_cast<std::size_t>(row) * static_cast<std::size_t>(blocks.columns)];
}

/// The range of points, those at the ends included.
HeightPyramid::Range HeightPyramid::Scan(int left, int top, int right, int bottom) const
{
    right = std::min(right, columns_ - 1);
    bottom = std::min(bottom, rows_ - 1);
    const float first = grid_[left + static_cast<std::ptrdiff_t>(top) * stride_].value;
    Range range{first, first};
    for (int row = top; row <= bottom; ++row) {
        const ElevationElement* element = grid_ + left + static_cast<std::ptrdiff_t>(row) * stride_;
        for (int column = left; column <= right; ++column, ++element)
            range = Joined(range, {element->value, element->value});
    }
    return range;
}

void HeightPyramid::Renew(std::size_t level, int column, int row)
{
    Level& blocks = levels_[level];
    Range& range = blocks.blocks[static_cast<std::size_t>(column) +
                                 static_cast<std::size_t>(row) * static_cast<std::size_t>(blocks.columns)];
    if (level == 0) {
        range = Scan(column << kFirst, row << kFirst, (column + 1) << kFirst, (row + 1) << kFirst);
        return;
    }
    const int below = static_cast<int>(level) - 1 + kFirst;
    const int right = std::min(2 * column + 1, levels_[level - 1].columns - 1);
    const int bottom = std::min(2 * row + 1, levels_[level - 1].rows - 1);
    range = At(below, 2 * column, 2 * row);
    for (int y = 2 * row; y <= bottom; ++y) {
        for (int x = 2 * column; x <= right; ++x)
            range = Joined(range, At(below, x, y));
    }
}

}  // namespace tessara
