#pragma once

#include <string>
#include <vector>

namespace tessara {

/// The files on the disk that a file, or a name in one of GDAL's notations, takes its content from: the file itself,
/// the archive that it lies in, the parts that it points to, what lies beside it and belongs to it.
/// \return only files that are there, in no particular order; empty where the name leads to none
std::vector<std::string> FilesBehind(const std::string& name);

}  // namespace tessara
