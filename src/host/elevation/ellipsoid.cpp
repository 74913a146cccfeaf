#include "host/elevation/ellipsoid.h"

#include <cmath>
#include <numbers>

namespace tessara {
namespace {

constexpr double kRadian = std::numbers::pi / 180.0;

/// The square of the first eccentricity.
double SquaredEccentricity(const Ellipsoid& ellipsoid)
{
    if (ellipsoid.inverseFlattening == 0.0)
        return 0.0;
    const double flattening = 1.0 / ellipsoid.inverseFlattening;
    return flattening * (2.0 - flattening);
}

/// 1 - e^2 sin^2(latitude)
double Bulge(const Ellipsoid& ellipsoid, double latitude)
{
    const double sine = std::sin(latitude * kRadian);
    return 1.0 - SquaredEccentricity(ellipsoid) * sine * sine;
}

}  // namespace

double Ellipsoid::LongitudeDegree(double latitude) const
{
    return kRadian * semiMajor / std::sqrt(Bulge(*this, latitude)) * std::cos(latitude * kRadian);
}

double Ellipsoid::LatitudeDegree(double latitude) const
{
    const double bulge = Bulge(*this, latitude);
    return kRadian * semiMajor * (1.0 - SquaredEccentricity(*this)) / (bulge * std::sqrt(bulge));
}

}  // namespace tessara
