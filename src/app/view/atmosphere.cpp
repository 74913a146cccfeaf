#include "app/view/atmosphere.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessara {

namespace {

Vector3 Mix(const Vector3& a, const Vector3& b, double t)
{
    return a * (1.0 - t) + b * t;
}

}  // namespace

Vector3 Atmosphere::Sky(double height) const
{
    constexpr Vector3 kZenith{0.085, 0.25, 0.60};
    constexpr Vector3 kNadir{0.90, 0.93, 0.97};
    const double share = 1.0 - std::exp(-std::fabs(height) * 8.0);
    return Mix(hazeColor, height > 0.0 ? kZenith : kNadir, share);
}

Atmosphere SunlitAtmosphere(double azimuth, double height)
{
    const double compass = azimuth * std::numbers::pi / 180.0;
    const double rise = height * std::numbers::pi / 180.0;
    Atmosphere atmosphere;
    atmosphere.sunDirection = {std::cos(rise) * std::sin(compass), std::sin(rise), -std::cos(rise) * std::cos(compass)};
    return atmosphere;
}

double EncodeLight(double linear)
{
    const double shown = linear * (1.0 + linear * 0.12) / (1.0 + linear * 0.55);
    return std::pow(std::clamp(shown, 0.0, 1.0), 1.0 / 2.2);
}

}  // namespace tessara
