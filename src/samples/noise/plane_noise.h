#pragma once

#include <cstdint>

namespace tessara {

/// Gradient noise on the plane, without end.
class PlaneNoise {
public:
    explicit PlaneNoise(std::uint32_t seed) : seed_(seed) {}

    /// About -0.7 to 0.7, 0 at the lattice points. \param x, y below 2^30 in size
    double At(double x, double y) const;

    /// A sum of octaves, each twice as fine and `gain` times as high as the one before, about -1 to 1.
    double Sum(double x, double y, int octaves, double gain = 0.5) const;

    /// The same with sharp crests, 0 to about 1.
    double Ridges(double x, double y, int octaves) const;

private:
    std::uint32_t seed_;
};

}  // namespace tessara
