#pragma once

#include "app/view/padded_rows.h"

#include <span>

namespace tessara {

struct HeightGrid;

/// How much of the sky the points of a terrain see over the ground around them.
class OpenSky {
public:
    /// \param grid outlives this object and doesn't change
    explicit OpenSky(const HeightGrid& grid) : grid_(grid), rows_(grid) {}

    /// Shares of the sky above the horizon in eight directions, for the points of a row.
    /// \param skylight as many as a row has
    void Row(int row, std::span<float> skylight) const;

private:
    void Run(int column, int row, float (&skylight)[PaddedRows::kRun]) const;

    const HeightGrid& grid_;
    PaddedRows rows_;
};

}  // namespace tessara
