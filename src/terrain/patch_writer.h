#pragma once

#include "platform/gl/gl.h"
#include "terrain/quad_corner.h"

#include <cstdint>
#include <cstdio>

class TerrainLod;

/// Up to eight triangles p0, p1, p2 by two of their sides, and their unit normals (p0 - p1) x (p1 - p2), zero for one
/// without area. Each operation runs over all of them, so that a compiler can give them to the lanes of a register.
struct TriangleSides {
    void Set(std::uint32_t i, const float* p0, const float* p1, const float* p2);
    void MakeNormals();

    float first[3][8] = {};
    float second[3][8] = {};
    float normal[3][8] = {};
};

/// Writes patches, the nine vertices and up to eight triangles of one node, into the fixed arrays of a TerrainLod. One
/// object serves one walk: it holds what stays the same from node to node.
///
/// Vertices are numbered in a ring: 0 centre, 1 east, 2 north-east, 3 north, 4 north-west, 5 west, 6 south-west,
/// 7 south, 8 south-east.
class PatchWriter {
public:
    explicit PatchWriter(TerrainLod& terrain);
    PatchWriter(const PatchWriter&) = delete;
    PatchWriter& operator=(const PatchWriter&) = delete;

    /// Writes the vertices of a node: positions clamped into the grid, y unscaled, the palette's colours of the grid at
    /// these positions, and their places in the source texture; and the indices of the triangles that its active mask
    /// allows. \param samples the node's five own heights \return the number of indices, at most 24
    std::uint32_t Write(const QuadCorner& corner, const QuadSample* samples, std::uint8_t activeMask);

    /// The same, and gives each vertex the normal of the last triangle that uses it. Unused ones keep theirs.
    std::uint32_t WriteShaded(const QuadCorner& corner, const QuadSample* samples, std::uint8_t activeMask);

    /// Draws the triangles with one glDrawElements.
    void Draw(std::uint32_t indexCount) const;

    /// Writes the positions of the triangles to a text stream, a line each.
    void WriteText(std::uint32_t indexCount, std::FILE* stream) const;

private:
    struct PatchAxis;

    void WritePlaces(const PatchAxis& across, const PatchAxis& down, const QuadCorner& corner,
                     const QuadSample* samples);
    void ReadElevations(const PatchAxis& across, const PatchAxis& down);
    void WriteColors();
    std::uint32_t WriteIndices(std::uint8_t activeMask);

    TerrainLod& terrain_;
    const bool useColor_;
    float elevations_[9];          // of the grid at the vertices of the node
    TriangleSides sides_;          // of the node before, until the next one's are written
    std::uint8_t colors_[256][4];  // red, green, blue and 255 for each table index of the palette
};
