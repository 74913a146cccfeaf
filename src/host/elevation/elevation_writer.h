#pragma once

#include "elevation_data.h"

#include <string>

namespace tessara {

/// Writes a grid in the format that the ending of `path` names. A file that is there already is replaced at once or not
/// at all.
///
/// | Ending      | Format          | Heights                         | Place                                          |
/// |-------------|-----------------|---------------------------------|------------------------------------------------|
/// | .tif, .tiff | GeoTIFF         | 32-bit, bit for bit             | coordinates, turned ones too, and reference    |
/// | .asc        | ESRI ASCII grid | as many digits as a float needs | coordinates; the reference in a .prj beside it |
/// | .png        | 16-bit PNG      | whole metres, 0 to 65535        | none                                           |
///
/// Cells without data are written as such, with ElevationData::noDataMark where no height is equal to it.
/// \throws ElevationError when the format can't hold the heights or the file can't be written
void WriteElevationFile(const ElevationData& data, const std::string& path);

}  // namespace tessara
