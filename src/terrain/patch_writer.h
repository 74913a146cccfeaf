#pragma once

#include "platform/gl/gl.h"
#include "terrain/quad_corner.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

class TerrainLod;

/// Unit normal of the triangle p0, p1, p2: (p0 - p1) x (p1 - p2), normalised. A triangle without area gives zero.
void FaceNormal(const float* p0, const float* p1, const float* p2, float* normal);

/// Scales a vector to length 1.0 in place; a zero vector stays.
void Normalize(float* vector);

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
    /// these positions, and their places in the source texture. \param samples the node's five own heights
    void WriteVertices(const QuadCorner& corner, const QuadSample* samples);

    /// Writes the indices of the triangles that an active mask allows. \return their number, at most 24
    std::uint32_t WriteIndices(std::uint8_t activeMask);

    /// Gives the three vertices of each triangle the triangle's normal, in the order of the indices.
    void WriteNormals(std::uint32_t indexCount);

    /// Draws the triangles with one glDrawElements.
    void Draw(std::uint32_t indexCount) const;

    /// Writes the positions of the triangles to a text stream, a line each.
    void WriteText(std::uint32_t indexCount, std::FILE* stream) const;

private:
    void WriteColors(const std::ptrdiff_t* columns, const std::ptrdiff_t* rows);

    TerrainLod& terrain_;
    const bool useColor_;
    std::uint8_t colors_[256][4];  // red, green, blue and 255 for each table index of the palette
};
