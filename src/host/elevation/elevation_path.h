#pragma once

#include <string>

namespace tessara {

/// The name under which GDAL finds the file or folder at `path`, which is sure to exist on this machine and to be
/// readable.
/// \throws ElevationError otherwise
std::string CheckedElevationPath(const std::string& path);

}  // namespace tessara
