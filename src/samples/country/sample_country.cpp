#include "samples/country/sample_country.h"

#include "samples/noise/lattice_noise.h"

#include <algorithm>
#include <cmath>

namespace tessara {

SampleCountry::SampleCountry(std::uint32_t seed) : coast_(seed), detail_(seed + 1), ranges_(seed + 2), rock_(seed + 3)
{
}

double SampleCountry::Inland(double x, double y) const
{
    const double across = x - y;
    const double shores = 0.68 - std::abs(across - 0.2) + 0.75 * coast_.Sum(x * 2.2 + 0.4, y * 2.2, 4, 0.45);
    // Whatever the seed, the corner is sea: without an outlet nothing would wear away.
    return shores - 4.0 * std::max(0.0, -0.95 - across);
}

double SampleCountry::Uplift(double x, double y, double inland) const
{
    const double warpX = x + 0.12 * detail_.Sum(x * 2.0, y * 2.0, 3);
    const double warpY = y + 0.12 * detail_.Sum(x * 2.0 + 40.0, y * 2.0, 3);
    const double range = ranges_.Ridges(warpX * 1.6, warpY * 1.6, 3);
    return SmoothStep(0.0, 0.6, inland) * (0.12 + 1.05 * range * range);
}

double SampleCountry::Hardness(double x, double y) const
{
    return 1.0 + 0.45 * rock_.Sum(x * 5.0, y * 5.0, 4);
}

double SampleCountry::Roughness(double x, double y) const
{
    return detail_.Sum(x * 12.0, y * 12.0, 5, 0.6);
}

void SampleCountry::Bend(double& x, double& y, double reach) const
{
    const double u = x / (5.0 * reach);
    const double v = y / (5.0 * reach);
    x += 1.2 * reach * detail_.Sum(u, v, 2);
    y += 1.2 * reach * coast_.Sum(u + 31.7, v + 3.3, 2);
}

}  // namespace tessara
