#include "terrain/patch_writer.h"

#include "terrain/quad_node.h"
#include "terrain/terrain_lod.h"
#include "textures/elevation_element.h"
#include "textures/elevation_palette.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

struct TriangleList {
    std::uint8_t count = 0;
    std::array<std::uint8_t, 24> indices{};

    constexpr void Add(std::uint32_t first, std::uint32_t second)
    {
        indices[count++] = 0;
        indices[count++] = static_cast<std::uint8_t>(first);
        indices[count++] = static_cast<std::uint8_t>(second);
    }
};

/// The fan around the centre that a mask allows, side by side in the order east, north, west, south. A side whose
/// vertex is inactive is one long triangle; else each half is drawn unless an active child draws it.
constexpr TriangleList MakeTriangles(std::uint8_t mask)
{
    TriangleList list;
    for (std::uint32_t edge = 0; edge < 4; ++edge) {
        const std::uint32_t vertex = 2 * edge + 1;
        const std::uint32_t before = edge == 0 ? 8 : vertex - 1;
        const std::uint32_t after = vertex + 1;
        if (!(mask & EdgeBit(edge))) {
            list.Add(before, after);
            continue;
        }
        if (!(mask & ChildBit((edge + 3) & 3)))
            list.Add(before, vertex);
        if (!(mask & ChildBit(edge)))
            list.Add(vertex, after);
    }
    return list;
}

constexpr std::array<TriangleList, 256> kTriangles = [] {
    std::array<TriangleList, 256> lists{};
    for (std::uint32_t mask = 0; mask < 256; ++mask)
        lists[mask] = MakeTriangles(static_cast<std::uint8_t>(mask));
    return lists;
}();

/// Place of each vertex of a patch: west, middle or east column, north, middle or south row.
constexpr std::uint8_t kColumn[9] = {1, 2, 2, 1, 0, 0, 0, 1, 2};
constexpr std::uint8_t kRow[9] = {1, 1, 0, 0, 0, 1, 2, 2, 2};

/// The three places of a patch along one axis, clamped into the grid.
struct PatchAxis {
    PatchAxis(std::int32_t origin, std::int32_t half, std::int32_t cells)
    {
        const float size = static_cast<float>(cells);
        for (std::int32_t i = 0; i < 3; ++i) {
            float at = static_cast<float>(origin + i * half);
            if (at < 0.0f)
                at = 0.0f;
            if (at >= size)
                at = size - 1.0f;
            place[i] = at;
            texture[i] = at / size;
            // A float can't hold every place of a very wide grid: the last one may have been rounded up.
            cell[i] = std::min(static_cast<std::ptrdiff_t>(at), std::ptrdiff_t{cells} - 1);
        }
    }
    float place[3];
    float texture[3];  // place in the source texture
    std::ptrdiff_t cell[3];
};

}  // namespace

void Normalize(float* vector)
{
    float length = std::sqrt(vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2]);
    if (length == 0.0f)
        length = 1.0f;
    vector[0] /= length;
    vector[1] /= length;
    vector[2] /= length;
}

void FaceNormal(const float* p0, const float* p1, const float* p2, float* normal)
{
    const float a[3] = {p0[0] - p1[0], p0[1] - p1[1], p0[2] - p1[2]};
    const float b[3] = {p1[0] - p2[0], p1[1] - p2[1], p1[2] - p2[2]};
    normal[0] = a[1] * b[2] - a[2] * b[1];
    normal[1] = a[2] * b[0] - a[0] * b[2];
    normal[2] = a[0] * b[1] - a[1] * b[0];
    Normalize(normal);
}

PatchWriter::PatchWriter(TerrainLod& terrain) : terrain_(terrain), useColor_(terrain.UseVertexColor)
{
    const ElevationPalette* palette = terrain.Source.Palette;
    for (std::int16_t i = 0; useColor_ && i < 256; ++i) {
        colors_[i][0] = palette ? palette->GetRed(i) : 255;
        colors_[i][1] = palette ? palette->GetGreen(i) : 255;
        colors_[i][2] = palette ? palette->GetBlue(i) : 255;
        colors_[i][3] = 255;
    }
}

void PatchWriter::WriteVertices(const QuadCorner& corner, const QuadSample* samples)
{
    const PatchAxis across(corner.OriginX, corner.HalfSide(), terrain_.Source.Width);
    const PatchAxis down(corner.OriginZ, corner.HalfSide(), terrain_.Source.Height);
    const float heights[9] = {samples[0].Height,        samples[1].Height,        corner.Corners[0].Height,
                              samples[2].Height,        corner.Corners[1].Height, samples[3].Height,
                              corner.Corners[2].Height, samples[4].Height,        corner.Corners[3].Height};
    for (std::uint32_t i = 0; i < 9; ++i) {
        const std::uint32_t x = kColumn[i];
        const std::uint32_t z = kRow[i];
        terrain_.VertexArray[i][0] = across.place[x];
        terrain_.VertexArray[i][1] = heights[i];
        terrain_.VertexArray[i][2] = down.place[z];
        terrain_.TexCoordArray[i][0] = across.texture[x];
        terrain_.TexCoordArray[i][1] = down.texture[z];
    }
    if (useColor_)
        WriteColors(across.cell, down.cell);
}

/// The colour follows the grid at the clamped position, not the vertex's height.
void PatchWriter::WriteColors(const std::ptrdiff_t* columns, const std::ptrdiff_t* rows)
{
    const HeightSource& source = terrain_.Source;
    for (std::uint32_t i = 0; i < 9; ++i) {
        const float elevation = source.Grid[columns[kColumn[i]] + rows[kRow[i]] * source.Stride].value;
        const std::int32_t entry = source.Palette ? source.Palette->IndexOf(elevation) : 0;
        std::memcpy(terrain_.ColorArray[i], colors_[std::clamp(entry, 0, 255)], 4);
    }
}

std::uint32_t PatchWriter::WriteIndices(std::uint8_t activeMask)
{
    const TriangleList& list = kTriangles[activeMask];
    std::memcpy(terrain_.IndexArray, list.indices.data(), list.indices.size());
    return list.count;
}

void PatchWriter::WriteNormals(std::uint32_t indexCount)
{
    for (std::uint32_t i = 0; i < indexCount; i += 3) {
        const std::uint8_t* at = terrain_.IndexArray + i;
        float normal[3];
        FaceNormal(terrain_.VertexArray[at[0]], terrain_.VertexArray[at[1]], terrain_.VertexArray[at[2]], normal);
        for (std::uint32_t corner = 0; corner < 3; ++corner)
            std::memcpy(terrain_.NormalArray[at[corner]], normal, sizeof(normal));
    }
}

void PatchWriter::Draw(std::uint32_t indexCount) const
{
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(indexCount), GL_UNSIGNED_BYTE, terrain_.IndexArray);
}

void PatchWriter::WriteText(std::uint32_t indexCount, std::FILE* stream) const
{
    // Six decimals in fixed notation, as the format %f prints them in a locale with a decimal point. The longest float
    // takes 47 characters.
    char text[24 * 3 * 48];
    char* end = text;
    for (std::uint32_t i = 0; i < indexCount; ++i) {
        const float* position = terrain_.VertexArray[terrain_.IndexArray[i]];
        for (std::uint32_t axis = 0; axis < 3; ++axis) {
            const auto value = static_cast<double>(position[axis]);
            end = std::to_chars(end, text + sizeof(text), value, std::chars_format::fixed, 6).ptr;
            *end++ = axis < 2 ? '\t' : '\n';
        }
    }
    std::fwrite(text, 1, static_cast<std::size_t>(end - text), stream);
}
