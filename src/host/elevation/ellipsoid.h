#pragma once

namespace tessara {

/// The shape that latitudes and longitudes refer to; WGS 84 unless said otherwise.
struct Ellipsoid {
    double semiMajor = 6378137.0;              ///< metres
    double inverseFlattening = 298.257223563;  ///< 0 for a sphere

    /// Metres that a degree of longitude is long at a latitude in degrees: the circle of that latitude has the radius
    /// N cos(latitude) with the radius of curvature N of the prime vertical.
    double LongitudeDegree(double latitude) const;

    /// Metres that a degree of latitude is long there, with the meridian's radius of curvature.
    double LatitudeDegree(double latitude) const;
};

}  // namespace tessara
