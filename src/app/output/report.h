#pragma once

#include <string>

namespace tessara {

struct ElevationData;

/// A number with a decimal point and without needless zeros.
std::string NumberText(double value, int decimals);

std::string MebibytesText(double bytes);

/// Prints a line of a report: a name, and its text in a second column.
void Line(const char* name, const std::string& text);

/// Prints size, spacing, extent and range of a grid of heights.
void PrintGrid(const ElevationData& data);

/// Prints where it lies.
void PrintReference(const ElevationData& data);

/// Tells of a file that was written: a line on what it holds, and its path as the last one. Nothing where the file is
/// the standard output.
void PrintWritten(const std::string& what, const std::string& path);

}  // namespace tessara
