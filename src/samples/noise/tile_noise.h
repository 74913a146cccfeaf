#pragma once

#include <cstdint>

namespace tessara::detail {

/// A well-mixed number of three others, the same on every machine.
std::uint32_t Hash(std::uint32_t x, std::uint32_t y, std::uint32_t seed);

/// A row of numbers that look random and are the same on every machine.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : seed_(seed) {}

    /// From 0 up to 1.
    float Next() { return static_cast<float>(Hash(count_++, 77, seed_) >> 8) / 16777216.0f; }

    float Between(float low, float high) { return low + (high - low) * Next(); }

private:
    std::uint32_t seed_;
    std::uint32_t count_ = 0;
};

/// Smooth noise of about -1 to 1 on the unit square, which repeats beyond it.
/// \param cells whole number of bumps along each axis
float Noise(float u, float v, int cellsU, int cellsV, std::uint32_t seed);

/// Octaves of noise, each twice as fine and `gain` times as strong as the one before; about -1 to 1.
float Clouds(float u, float v, int cells, int octaves, float gain, std::uint32_t seed);

/// Octaves of sharp crests, 0 to 1.
float Crests(float u, float v, int cells, int octaves, std::uint32_t seed);

/// Where a place lies among points that are strewn one to a cell.
struct CellPlace {
    float first;       ///< distance to the nearest point, in cells
    float edge;        ///< distance to the border with the next point's area, in cells
    float dx, dy;      ///< way to the nearest point, in cells
    std::uint32_t id;  ///< of the nearest point
};

/// \param cells whole number of cells along each axis \param disorder 0: a grid, 1: anywhere in the cell
CellPlace Cells(float u, float v, int cells, float disorder, std::uint32_t seed);

}  // namespace tessara::detail
