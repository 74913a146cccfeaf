#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tessara {

/// What every noise of the samples is built from. Only +, -, *, / and comparisons: the same on every machine.

/// A number of three others, each in the place that makes them hard to tell from chance once the bits are mixed.
constexpr std::uint32_t JoinCell(std::uint32_t x, std::uint32_t y, std::uint32_t seed)
{
    return seed * 0x9E3779B9u + x * 0x85EBCA6Bu + y * 0xC2B2AE35u;
}

/// Lets every bit change about half of the others.
constexpr std::uint32_t MixBits(std::uint32_t bits)
{
    bits = (bits ^ bits >> 16) * 0x7FEB352Du;
    bits = (bits ^ bits >> 15) * 0x846CA68Bu;
    return bits ^ bits >> 16;
}

/// A well-mixed number for a cell.
constexpr std::uint32_t HashCell(std::uint32_t x, std::uint32_t y, std::uint32_t seed)
{
    return MixBits(JoinCell(x, y, seed));
}

template <class Real>
constexpr Real Mix(Real a, Real b, Real t)
{
    return a + (b - a) * t;
}

/// From 0 to 1 as t does, with slope and curvature vanishing at both ends: no lattice line shows in the shading.
template <class Real>
constexpr Real Fade(Real t)
{
    return t * t * t * (t * (t * Real(6) - Real(15)) + Real(10));
}

/// 0 up to `low`, 1 from `high` on, level at both. \param low, high in either order
template <class Real>
constexpr Real SmoothStep(Real low, Real high, Real value)
{
    const Real t = std::clamp((value - low) / (high - low), Real(0), Real(1));
    return t * t * (Real(3) - Real(2) * t);
}

/// Gradient noise on a lattice of unit squares. \param x, y below 2^30 in size
/// \param gradient gradient(column, row, dx, dy) is the height at an offset from a point of the lattice, on the slope
/// that the point has
template <class Real, class Gradient>
Real LatticeNoise(Real x, Real y, Gradient gradient)
{
    const Real floorX = std::floor(x);
    const Real floorY = std::floor(y);
    const auto corner = [&](int i, int j) {
        return gradient(static_cast<std::int32_t>(floorX) + i, static_cast<std::int32_t>(floorY) + j,
                        x - floorX - static_cast<Real>(i), y - floorY - static_cast<Real>(j));
    };
    const Real across = Fade(x - floorX);
    return Mix(Mix(corner(0, 0), corner(1, 0), across), Mix(corner(0, 1), corner(1, 1), across), Fade(y - floorY));
}

}  // namespace tessara
