#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessara {

struct ElevationData;

/// What somebody wants of the sea.
struct SeaChoice {
    std::optional<bool> shown;    ///< without it the heights decide whether there is one
    std::optional<double> level;  ///< in metres, or else 0

    bool operator==(const SeaChoice&) const = default;
};

/// Water over the ground up to a level.
struct Sea {
    double level = 0.0;             ///< metres
    std::vector<std::uint8_t> dry;  ///< 1 for each cell that lies deep and yet isn't under water; empty for none

    /// Whether a cell is under water. \param metres its height
    bool Covers(std::size_t cell, float metres) const
    {
        return static_cast<double>(metres) <= level + kTolerance && (dry.empty() || dry[cell] == 0);
    }

    /// A height that came through other units needn't be the level to the bit.
    static constexpr double kTolerance = 0.01;
};

/// The sea of a terrain. One that is asked for covers all ground up to its level. A guess takes only water that reaches
/// the edge of the grid and is flat, or whose ground falls as that of a sea does: no low land and no hole within land
/// that somebody filled with 0. \return nothing where there is none
std::optional<Sea> SeaOf(const ElevationData& data, const SeaChoice& choice);

}  // namespace tessara
