#pragma once

#include "elevation_data.h"
#include "elevation_fill.h"
#include "grid_part.h"
#include "progress_callback.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tessara {

struct ElevationReadOptions {
    /// A larger grid is read reduced to about this many cells, each the mean of those of the file that it covers.
    std::int64_t maximumCells = std::int64_t{4097} * 4097;

    /// Metres on the ground from one cell to the next that are enough: a finer grid is read reduced to about that; 0
    /// takes the file's.
    double resolution = 0.0;

    /// Which of the file's cells are read. At most one of both; none reads all.
    std::optional<CellWindow> window;
    std::optional<MapExtent> extent;

    ElevationFill fill = ElevationFill::Smooth;

    /// Metres from one cell of the file to the next, whatever the file says; 0 goes by the file.
    double spacing = 0.0;

    /// A value of the file that means no data, besides what the file says.
    std::optional<double> noData;

    /// Which grid of a file that holds several, by its name; empty for the only one.
    std::string grid;

    /// Which band of the grid, from 1 on; 0 for the first one, unless the bands look like the channels of a picture.
    int band = 0;

    /// Unit of the file's heights, such as "m", "ft" or "us-ft", whatever the file says; empty goes by the file.
    std::string heightUnit;

    /// Whether every cell of the file is looked at, though it is read reduced and has overviews: then
    /// ElevationData::sourceRange is exact.
    bool exactRange = false;

    /// Seconds that a pipe may be without anybody who writes to it.
    double patience = 10.0;
};

/// Reads the heights of a file in any raster format that GDAL knows: GeoTIFF, SRTM HGT, ESRI ASCII grid, USGS DEM,
/// 16-bit PNG and many more. Rows come north first and columns west first however the file has them. Heights are taken
/// in the file's unit with its scale and offset.
/// \param path a file or folder; a pipe, of which the standard input is called /vsistdin/; a file in one of GDAL's
/// virtual file systems (/vsizip/...) or a grid in GDAL's notation (NETCDF:"file.nc":height); an address (http://,
/// https://, /vsicurl/...). Only where the path is on a network anything is fetched from one \throws ElevationError for
/// a file that holds no elevations, is damaged, cut short or beyond reason in size, and for
///         want of memory
ElevationData ReadElevationFile(const std::string& path, const ElevationReadOptions& options = {},
                                const ProgressCallback& progress = {});

}  // namespace tessara
