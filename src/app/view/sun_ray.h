#pragma once

#include "host/vector3.h"

#include <cstddef>
#include <vector>

namespace tessara {

struct HeightGrid;

/// Looks along the ground towards the sun, in steps of at most one cell, as far as ground can still hide it.
class SunRay {
public:
    /// \param grid outlives this object and doesn't change \param sun direction towards it, not below the horizon
    SunRay(const HeightGrid& grid, const Vector3& sun);

    /// Share of the sun that is seen from a point of the grid, 0 to 1.
    float Sunlight(int column, int row) const;

private:
    void FindSummits();

    const HeightGrid& grid_;
    float highest_ = 0.0f;
    float stepX_ = 0.0f;
    float stepZ_ = 0.0f;
    float stepGround_ = 0.0f;
    float inverseX_ = 0.0f;
    float inverseZ_ = 0.0f;
    float rise_ = 0.0f;
    std::size_t tilesAcross_ = 0;
    std::vector<float> summits_;  // the highest ground of each tile, row by row
};

}  // namespace tessara
