#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// Where a command writes to, after the name that its user gave.
/// \param named "-" stands for the standard output
/// \param inputs files that the command reads, in GDAL's notations as well; empty ones don't count
/// \param endings of the formats that are written, as ".png", in small letters; none lets every ending pass. A name
///        without an ending passes as well
/// \return the name for those who write
/// \throws FileError before long work for what can't be written, for another format's ending, and for an input or a
///         file that holds one
std::string CheckedOutput(const std::string& named, const std::vector<std::string>& inputs,
                          std::initializer_list<std::string_view> endings);

}  // namespace tessara
