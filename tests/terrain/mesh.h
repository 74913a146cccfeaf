#pragma once

#include "terrain/quad_node.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class TerrainLod;

/// The triangles that a terrain's tree gives as it stands, at the places before they are clamped into the grid.
struct Mesh {
    struct Vertex {
        std::int32_t x;
        std::int32_t z;
        float y;
    };
    std::vector<std::array<Vertex, 3>> triangles;
    std::int32_t side = 0;
};

Mesh ReadMesh(TerrainLod& terrain);

/// Says where the mesh is not closed: an edge inside the terrain that isn't shared by two triangles, once in each
/// direction, or an area that isn't the root's. \return an empty text for a sound mesh
std::string FindCrack(const Mesh& mesh);

/// Says where the tree's bits and counters break their rules. \return an empty text for a sound tree
std::string FindBrokenRule(TerrainLod& terrain);

/// Every figure of every node, in walk order, to compare two states.
std::vector<std::uint32_t> ReadTree(const TerrainLod& terrain);

/// Number of triangles of the active mesh.
std::size_t CountTriangles(TerrainLod& terrain);
