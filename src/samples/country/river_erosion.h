#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessara {

/// Wears a square of land down by running water and creeping soil while the ground rises. Rivers cut in with the stream
/// power law, slope times a power of the area that they drain, solved implicitly from the sea upwards, so that long
/// steps stay stable (Braun and Willett 2013, here with every lower neighbour as a receiver). No slope stays steeper
/// than its ground can lie. The outermost ring of cells is a wall. The same on every machine.
class RiverErosion {
public:
    /// \param size cells along an edge, at least 3
    /// \param spacing metres from one to the next
    RiverErosion(int size, float spacing);

    /// Row-major fields of size * size cells, to be filled in before the first step.
    std::vector<float> heights;   ///< metres; cells at or below 0 are sea and stay as they are
    std::vector<float> uplift;    ///< metres that the ground rises in a step of length 1
    std::vector<float> hardness;  ///< 1 for common rock, more for rock that wears slowly
    std::vector<float> repose;    ///< steepest that the ground lies, rise over run
    std::vector<float> creep;     ///< square metres that soil spreads over in a step of length 1
    std::vector<float> spring;    ///< square metres that must drain to a cell before water cuts a bed there

    void Step(float length);

private:
    void RaiseWall();
    void Flood();
    void GatherAreas();
    void Incise(float length);
    void Creep(float length);
    template <class Visit>
    void VisitReceivers(std::uint32_t cell, Visit visit) const;

    std::uint32_t size_;
    float spacing_;
    std::array<std::uint32_t, 8> offsets_;  // to the neighbours, modulo 2^32, the four nearest first
    std::vector<float> water_;              // height with every hollow filled to its rim, rising away from the outlet
    std::vector<std::uint32_t> order_;      // land cells, receivers before what drains to them
    std::vector<std::uint32_t> rank_;       // place in order_ from 1 on, 0 for sea, kWall for the wall
    std::vector<float> areas_;              // square metres that drain through a cell
    std::vector<float> before_;             // heights before the soil creeps
};

}  // namespace tessara
