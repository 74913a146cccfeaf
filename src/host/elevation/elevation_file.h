#pragma once

#include "elevation_data.h"
#include "elevation_fill.h"
#include "progress_callback.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tessara {

struct ElevationReadOptions {
    /// A larger grid is read reduced to about this many cells, each the mean of those of the file that it covers.
    std::int64_t maximumCells = std::int64_t{4097} * 4097;

    ElevationFill fill = ElevationFill::Smooth;

    /// Metres from one cell of the file to the next, whatever the file says; 0 goes by the file.
    double spacing = 0.0;

    /// A value of the file that means no data, besides what the file says.
    std::optional<double> noData;
};

/// Reads the heights of a file in any raster format that GDAL knows: GeoTIFF, SRTM HGT, ESRI ASCII grid, USGS DEM,
/// 16-bit PNG and many more. Rows come north first and columns west first however the file has them. Heights are taken
/// in the file's unit with its scale and offset. Nothing is fetched over a network.
/// \param path a file or folder, or a file in an archive in GDAL's notation (/vsizip/...)
/// \throws ElevationError for a file that holds no elevations, is damaged, cut short or beyond reason in size, and for
///         want of memory
ElevationData ReadElevationFile(const std::string& path, const ElevationReadOptions& options = {},
                                const ProgressCallback& progress = {});

}  // namespace tessara
