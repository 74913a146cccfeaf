#pragma once

#include "host/elevation/grid_frame.h"
#include "host/elevation/grid_part.h"

#include <string>
#include <vector>

class GDALDataset;

namespace tessara {

struct ElevationReadOptions;

/// Finds the cells of a file that were asked for, in the order in which the file has them.
/// \param frame of the whole file
/// \param notes gets a sentence where a choice had to be understood, or went past the file's edge
/// \throws std::invalid_argument with the reason, as a clause without a full stop, where there are no such cells
CellWindow ChooseCells(GDALDataset& dataset, const GridFrame& frame, const ElevationReadOptions& options,
                       std::vector<std::string>& notes);

}  // namespace tessara
