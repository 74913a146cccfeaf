#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessara {

struct ElevationData;

/// A length such as "250 m" or "12.5 km".
std::string LengthText(double metres);

/// A height such as "1234.5 m".
std::string HeightText(double metres);

/// The same after the height in the unit of the terrain's file, where that is another one: "4050.2 ft (1234.5 m)".
std::string HeightText(const ElevationData& data, double metres);

/// A slope such as "23.4°".
std::string SlopeText(double degrees);

/// A place of the terrain in the coordinates of its file and in metres from its south-west corner.
/// \param x,z metres east and south of the north-west grid point
std::string PlaceText(const ElevationData& data, double x, double z);

/// A whole number with thin gaps between its thousands, such as "48 145".
std::string CountText(std::uint64_t count);

/// A length for a scale bar: 1, 2 or 5 times a power of ten, the longest that isn't longer than `most`, which is
/// positive.
double RoundLength(double most);

/// Round heights to mark on a legend, between the two, from low to high. \param most marks at most, at least 2
std::vector<double> LegendMarks(double low, double high, int most);

}  // namespace tessara
