#pragma once

#include "app/view/height_grid.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tessara {

/// A copy of a grid of heights with room beyond the ends of its rows, so that a run of neighbouring points can be
/// looked at from any distance without asking for each whether it lies in the grid.
class PaddedRows {
public:
    static constexpr int kRun = 32;           ///< points of a run
    static constexpr int kMargin = kRun + 8;  ///< points beyond either end

    /// Repeats the outermost heights.
    explicit PaddedRows(const HeightGrid& grid) : PaddedRows(grid, nullptr) {}

    /// Puts a height everywhere beyond.
    PaddedRows(const HeightGrid& grid, float beyond) : PaddedRows(grid, &beyond) {}

    /// The height of a point and those that follow it. \param column from -kMargin to the width + kMargin - kRun
    /// \param row from 0 to the height
    const float* At(int column, int row) const
    {
        return heights_.data() + static_cast<std::size_t>(row) * stride_ + static_cast<std::size_t>(column + kMargin);
    }

private:
    PaddedRows(const HeightGrid& grid, const float* beyond)
        : stride_(static_cast<std::size_t>(grid.width) + 2 * kMargin)
    {
        heights_.reserve(stride_ * (static_cast<std::size_t>(grid.height) + 1));
        for (int row = 0; row <= grid.height; ++row) {
            const float* from = grid.heights.data() + grid.Index(0, std::min(row, grid.height - 1));
            heights_.insert(heights_.end(), kMargin, beyond ? *beyond : from[0]);
            heights_.insert(heights_.end(), from, from + grid.width);
            heights_.insert(heights_.end(), kMargin, beyond ? *beyond : from[grid.width - 1]);
        }
    }

    std::size_t stride_;
    std::vector<float> heights_;
};

}  // namespace tessara
