#include "host/elevation/terrain_noise.h"

#include <cmath>

namespace tessara {
namespace {

/// Slope and curvature vanish at both ends, so that no lattice line shows in the shading.
double Fade(double t)
{
    return t * t * t * (t * (t * 6.0 - 15.0) + 10.0);
}

double Mix(double a, double b, double t)
{
    return a + (b - a) * t;
}

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

std::uint32_t HashCell(std::uint32_t x, std::uint32_t y, std::uint32_t seed)
{
    std::uint32_t hash = seed * 0x9E3779B9u + x * 0x85EBCA6Bu + y * 0xC2B2AE35u;
    hash = (hash ^ (hash >> 16)) * 0x7FEB352Du;
    hash = (hash ^ (hash >> 15)) * 0x846CA68Bu;
    return hash ^ (hash >> 16);
}

double TerrainNoise::At(double x, double y) const
{
    const double floorX = std::floor(x);
    const double floorY = std::floor(y);
    const auto cellX = static_cast<std::uint32_t>(static_cast<std::int32_t>(floorX));
    const auto cellY = static_cast<std::uint32_t>(static_cast<std::int32_t>(floorY));
    const double fx = x - floorX;
    const double fy = y - floorY;
    const double north = Mix(Gradient(HashCell(cellX, cellY, seed_), fx, fy),
                             Gradient(HashCell(cellX + 1, cellY, seed_), fx - 1.0, fy), Fade(fx));
    const double south = Mix(Gradient(HashCell(cellX, cellY + 1, seed_), fx, fy - 1.0),
                             Gradient(HashCell(cellX + 1, cellY + 1, seed_), fx - 1.0, fy - 1.0), Fade(fx));
    return Mix(north, south, Fade(fy));
}

double TerrainNoise::Sum(double x, double y, int octaves, double gain) const
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

double TerrainNoise::Ridges(double x, double y, int octaves) const
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
