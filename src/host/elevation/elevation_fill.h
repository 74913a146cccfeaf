#pragma once

#include "elevation_data.h"

namespace tessara {

/// What cells without data get.
enum class ElevationFill {
    Smooth,  ///< a surface that runs smoothly from border to border of each hole, nowhere beyond the heights there
    Lowest,  ///< the lowest height of the grid
};

/// Gives every cell of `data.metres` that is not a number a height, marks them in `data.holes`, counts them in
/// `data.missing`, and sets the range.
/// \return false, with the heights untouched, when no cell has a height
bool FillMissing(ElevationData& data, ElevationFill fill);

}  // namespace tessara
