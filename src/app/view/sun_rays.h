#pragma once

#include "app/view/padded_rows.h"
#include "host/vector3.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tessara {

struct HeightGrid;

/// Looks along the ground towards the sun, in steps of at most one cell, as far as ground can still hide it: from many
/// points of a row at once, whose rays cross the cells in the same way.
class SunRays {
public:
    /// \param grid outlives this object and doesn't change \param sun direction towards it, not below the horizon
    SunRays(const HeightGrid& grid, const Vector3& sun);

    /// Shares of the sun that are seen from the points of a row, 0 to 1. \param sunlight as many as a row has
    void Row(int row, std::span<float> sunlight) const;

private:
    /// Rays from neighbouring points of a row.
    struct Beam {
        int column;
        int row;
        float lowest;  // of the starts
        float start[PaddedRows::kRun];
        float clearance[PaddedRows::kRun];  // least slope by which each passes the ground so far
    };

    void Follow(Beam& beam) const;
    void Step(Beam& beam, int step) const;
    bool Leaves(const Beam& beam, float count) const;
    float Summit(int tileX, int tileZ) const;
    void FindSummits();

    const HeightGrid& grid_;
    PaddedRows rows_;
    float highest_ = 0.0f;
    float stepX_ = 0.0f;
    float stepZ_ = 0.0f;
    float stepGround_ = 0.0f;
    float rise_ = 0.0f;
    int tilesAcross_ = 0;
    std::vector<float> summits_;  // the highest ground of each tile, row by row
};

}  // namespace tessara
