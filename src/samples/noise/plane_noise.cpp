#include "samples/noise/plane_noise.h"

#include "samples/noise/lattice_noise.h"

#include <cmath>

namespace tessara {
namespace {

/// The height that the gradient of a lattice point gives at an offset from it. Sixteen directions, near enough evenly
/// spread and of equal length.
double Gradient(std::uint32_t hash, double x, double y)
{
    constexpr double kFar = 0.92387953251128674;
    constexpr double kNear = 0.38268343236508977;
    constexpr double kHalf = 0.70710678118654752;
    constexpr double kDirections[4][2] = {{1.0, 0.0}, {kFar, kNear}, {kHalf, kHalf}, {kNear, kFar}};
    const double* direction = kDirections[hash & 3u];
    // Quarter turns of the first quadrant.
    const double turnedX = (hash & 4u) != 0 ? -y : x;
    const double turnedY = (hash & 4u) != 0 ? x : y;
    const double dot = direction[0] * turnedX + direction[1] * turnedY;
    return (hash & 8u) != 0 ? -dot : dot;
}

}  // namespace

double PlaneNoise::At(double x, double y) const
{
    return LatticeNoise(x, y, [this](std::int32_t column, std::int32_t row, double dx, double dy) {
        const auto hash = HashCell(static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(row), seed_);
        return Gradient(hash, dx, dy);
    });
}

double PlaneNoise::Sum(double x, double y, int octaves, double gain) const
{
    double sum = 0.0;
    double weight = 1.0;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += weight * At(x, y);
        weight *= gain;
        // Octaves off each other's lattice: their zeros don't fall together.
        x = x * 2.0 + 17.3;
        y = y * 2.0 - 9.1;
    }
    return sum;
}

double PlaneNoise::Ridges(double x, double y, int octaves) const
{
    double sum = 0.0;
    double weight = 0.5;
    for (int octave = 0; octave < octaves; ++octave) {
        const double crest = 1.0 - 1.4 * std::abs(At(x, y));
        sum += weight * crest * crest;
        weight *= 0.5;
        x = x * 2.0 - 5.7;
        y = y * 2.0 + 23.9;
    }
    return sum;
}

}  // namespace tessara
