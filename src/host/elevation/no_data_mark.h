#pragma once

#include "host/elevation/elevation_data.h"

#include <optional>

namespace tessara {

/// A number to write into the cells of a grid that have no data: the one of the file that the grid comes from, a usual
/// one, or any other that no cell with data has as its height.
/// \param wholeNumbers heights are written as whole numbers from 0 to 65535 \return nothing where none is free
std::optional<float> FreeNoDataMark(const ElevationData& data, bool wholeNumbers);

}  // namespace tessara
