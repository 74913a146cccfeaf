#pragma once

#include "host/elevation/elevation_data.h"

class GDALDataset;

namespace tessara {

/// Where the cells of a file lie on the ground.
struct GroundReference {
    bool flipRows = false;     ///< the file's first row is its southernmost
    bool flipColumns = false;  ///< the file's first column is its easternmost
};

/// Learns from a file what its cells span on the ground. Sets the spacing, the reference fields and format of `data`,
/// for the grid with the north first and the west first, and adds notes on what had to be assumed.
/// \param data its size is the one that the grid is read at, its source size the file's
/// \param spacing metres between the file's cells that count instead of what it says; 0 for none and anything else that
/// can't be
GroundReference LearnGround(GDALDataset& dataset, double spacing, ElevationData& data);

}  // namespace tessara
