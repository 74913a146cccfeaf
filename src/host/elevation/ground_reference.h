#pragma once

#include "host/elevation/elevation_data.h"
#include "host/elevation/grid_frame.h"

class GDALDataset;

namespace tessara {

/// Learns from a file what its cells span on the ground. Sets the spacing, the names of the reference system and the
/// format of `data`, and adds notes on what had to be assumed.
/// \param frame of what is read of the file
/// \param spacing metres between the file's cells that count instead of what it says; 0 for none and anything else that
/// can't be
void LearnGround(GDALDataset& dataset, const GridFrame& frame, double spacing, ElevationData& data);

/// Puts a grid in its place in the file's coordinates, with the north first and the west first, and widens the spacing
/// where several cells of the file become one.
/// \param data its size is the one that the frame's cells are read at
void PlaceGrid(const GridFrame& frame, ElevationData& data);

}  // namespace tessara
