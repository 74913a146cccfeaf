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

/// Heights of the sun in degrees between which its light turns from warm to white.
constexpr double kLowSun = 3.0;
constexpr double kHighSun = 22.0;

double SmoothStep(double low, double high, double value)
{
    const double t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

}  // namespace

Vector3 Atmosphere::Sky(const Vector3& direction) const
{
    constexpr Vector3 kZenith{0.105, 0.26, 0.53};
    constexpr Vector3 kNadir{0.72, 0.75, 0.79};
    constexpr double kFarGlow = 3.0;
    constexpr double kNearGlow = 40.0;
    const double share = 1.0 - std::exp(-std::fabs(direction.y) * 8.0);
    const double towardsSun = std::max(Dot(direction, sunDirection), 0.0);
    const double glow = 0.4 * std::pow(towardsSun, kFarGlow) + 0.6 * std::pow(towardsSun, kNearGlow);
    // What lies below the horizon is no air, but the ground on which a model stands.
    const double air = std::clamp(1.0 + 4.0 * direction.y, 0.0, 1.0);
    return Mix(hazeColor, direction.y > 0.0 ? kZenith : kNadir, share) + glowColor * (glow * air);
}

Atmosphere SunlitAtmosphere(double azimuth, double height)
{
    const double compass = azimuth * std::numbers::pi / 180.0;
    const double rise = height * std::numbers::pi / 180.0;
    Atmosphere atmosphere;
    atmosphere.sunDirection = {std::cos(rise) * std::sin(compass), std::sin(rise), -std::cos(rise) * std::cos(compass)};
    const double low = 1.0 - SmoothStep(kLowSun, kHighSun, height);
    const Vector3 onLevel = Vector3{1.0, 1.0, 1.0} - atmosphere.skyColor;
    const Vector3 warmth = Mix({1.0, 1.0, 1.0}, {1.08, 0.80, 0.52}, low);
    const double slant = std::max(std::sin(rise), std::sin(kHighSun * std::numbers::pi / 180.0));
    atmosphere.sunColor = {onLevel.x * warmth.x / slant, onLevel.y * warmth.y / slant, onLevel.z * warmth.z / slant};
    atmosphere.glowColor = Mix({0.30, 0.27, 0.20}, {0.75, 0.38, 0.10}, low);
    atmosphere.hazeColor = Mix({0.53, 0.63, 0.76}, {0.70, 0.60, 0.54}, low);
    return atmosphere;
}

double EncodeLight(double linear)
{
    const double bright = std::max(linear - 0.5, 0.0);
    return std::sqrt(std::clamp(linear, 0.0, 0.5) + 0.5 - 0.5 * std::exp(-2.0 * bright));
}

}  // namespace tessara
