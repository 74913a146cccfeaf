#pragma once

#include <cstdint>

class QuadNode;

/// One stored elevation, normalised, as the grid holds it.
struct QuadSample {
    float Height;
};

/// Describes one node for the time of a walk: where it lies, how big it is, who its parent is and how high its four
/// corners are. Tree coordinates: x grows east, z grows south, one unit is one grid cell.
///
/// Numbering, everywhere in the terrain: children and corners 0 north-east, 1 north-west, 2 south-west, 3 south-east;
/// edges 0 east, 1 north, 2 west, 3 south; samples 0 centre, e + 1 the vertex of edge e. Child i touches the edges i
/// and (i + 1) & 3.
struct QuadCorner {
    QuadCorner* Parent = nullptr;  ///< record of the parent node; null at the root
    QuadNode* Node = nullptr;      ///< the node; null for a child that doesn't exist
    std::uint32_t ChildIndex = 0;  ///< which child of the parent this is
    std::int32_t Level = 0;        ///< the side is 2 << Level
    std::int32_t OriginX = 0;      ///< the node's north-west corner
    std::int32_t OriginZ = 0;
    QuadSample Corners[4] = {};

    std::int32_t HalfSide() const { return 1 << Level; }
    std::int32_t Side() const { return 2 << Level; }
};
