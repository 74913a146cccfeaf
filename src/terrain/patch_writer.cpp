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

/// The triangles that a mask allows, and which of their normals are seen: a vertex keeps that of the last triangle that
/// uses it.
struct TriangleList {
    std::uint8_t count = 0;  // of indices
    std::array<std::uint8_t, 24> indices{};
    std::uint8_t seenCount = 0;
    std::array<std::uint8_t, 8> seenFirst{};   // second and third vertex of each triangle whose normal is seen;
    std::array<std::uint8_t, 8> seenSecond{};  // the first is the centre
    std::array<std::int8_t, 9> seenAt{};       // for each vertex the number of that triangle, below 0 where unused

    constexpr void Add(std::uint32_t first, std::uint32_t second)
    {
        indices[count++] = 0;
        indices[count++] = static_cast<std::uint8_t>(first);
        indices[count++] = static_cast<std::uint8_t>(second);
    }

    constexpr void FindSeen()
    {
        std::array<std::int8_t, 9> last{};
        last.fill(-1);
        for (std::uint8_t i = 0; i < count; ++i)
            last[indices[i]] = static_cast<std::int8_t>(i / 3);
        seenAt.fill(-1);
        for (std::uint8_t triangle = 0; triangle < count / 3; ++triangle) {
            bool seen = false;
            for (std::size_t vertex = 0; vertex < 9; ++vertex) {
                if (last[vertex] == triangle) {
                    seenAt[vertex] = static_cast<std::int8_t>(seenCount);
                    seen = true;
                }
            }
            if (!seen)
                continue;
            seenFirst[seenCount] = indices[3 * triangle + 1];
            seenSecond[seenCount++] = indices[3 * triangle + 2];
        }
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
    list.FindSeen();
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

}  // namespace

/// The three places of a patch along one axis, clamped into the grid.
struct PatchWriter::PatchAxis {
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
            cell[i] = std::min(static_cast<std::int32_t>(at), cells - 1);
        }
    }
    float place[3];
    float texture[3];  // place in the source texture
    std::int32_t cell[3];
};

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

void TriangleSides::Set(std::uint32_t i, const float* p0, const float* p1, const float* p2)
{
    for (std::uint32_t axis = 0; axis < 3; ++axis) {
        first[axis][i] = p0[axis] - p1[axis];
        second[axis][i] = p1[axis] - p2[axis];
    }
}

void TriangleSides::MakeNormals()
{
    for (std::uint32_t i = 0; i < 8; ++i) {
        const float x = first[1][i] * second[2][i] - first[2][i] * second[1][i];
        const float y = first[2][i] * second[0][i] - first[0][i] * second[2][i];
        const float z = first[0][i] * second[1][i] - first[1][i] * second[0][i];
        const float length = std::sqrt(x * x + y * y + z * z);
        const float divisor = length + static_cast<float>(length == 0.0f);
        normal[0][i] = x / divisor;
        normal[1][i] = y / divisor;
        normal[2][i] = z / divisor;
    }
}

std::uint32_t PatchWriter::Write(const QuadCorner& corner, const QuadSample* samples, std::uint8_t activeMask)
{
    const PatchAxis across(corner.OriginX, corner.HalfSide(), terrain_.Source.Width);
    const PatchAxis down(corner.OriginZ, corner.HalfSide(), terrain_.Source.Height);
    WritePlaces(across, down, corner, samples);
    if (useColor_) {
        ReadElevations(across, down);
        WriteColors();
    }
    return WriteIndices(activeMask);
}

std::uint32_t PatchWriter::WriteShaded(const QuadCorner& corner, const QuadSample* samples, std::uint8_t activeMask)
{
    const PatchAxis across(corner.OriginX, corner.HalfSide(), terrain_.Source.Width);
    const PatchAxis down(corner.OriginZ, corner.HalfSide(), terrain_.Source.Height);
    if (useColor_)
        ReadElevations(across, down);  // from far away: the places and the sides are written meanwhile
    WritePlaces(across, down, corner, samples);
    // What the normals are made of is written well before it is read: a wide read that follows narrow writes at once
    // waits for them.
    const TriangleList& list = kTriangles[activeMask];
    for (std::uint32_t i = 0; i < list.seenCount; ++i)
        sides_.Set(i, terrain_.VertexArray[0], terrain_.VertexArray[list.seenFirst[i]],
                   terrain_.VertexArray[list.seenSecond[i]]);
    if (useColor_)
        WriteColors();
    const std::uint32_t count = WriteIndices(activeMask);
    sides_.MakeNormals();
    for (std::uint32_t vertex = 0; vertex < 9; ++vertex) {
        if (list.seenAt[vertex] < 0)
            continue;
        for (std::uint32_t axis = 0; axis < 3; ++axis)
            terrain_.NormalArray[vertex][axis] = sides_.normal[axis][list.seenAt[vertex]];
    }
    return count;
}

void PatchWriter::WritePlaces(const PatchAxis& across, const PatchAxis& down, const QuadCorner& corner,
                              const QuadSample* samples)
{
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
}

/// The colour follows the grid at the clamped position, not the vertex's height.
void PatchWriter::ReadElevations(const PatchAxis& across, const PatchAxis& down)
{
    const HeightSource& source = terrain_.Source;
    for (std::uint32_t i = 0; i < 9; ++i) {
        const ElevationElement* row = source.Grid + static_cast<std::ptrdiff_t>(down.cell[kRow[i]]) * source.Stride;
        elevations_[i] = row[across.cell[kColumn[i]]].value;
    }
}

void PatchWriter::WriteColors()
{
    const ElevationPalette* palette = terrain_.Source.Palette;
    std::int32_t entries[9] = {};
    for (std::uint32_t i = 0; palette && i < 9; ++i)
        entries[i] = palette->IndexOf(elevations_[i]);
    for (std::uint32_t i = 0; i < 9; ++i)
        std::memcpy(terrain_.ColorArray[i], colors_[std::clamp(entries[i], 0, 255)], 4);
}

std::uint32_t PatchWriter::WriteIndices(std::uint8_t activeMask)
{
    const TriangleList& list = kTriangles[activeMask];
    std::memcpy(terrain_.IndexArray, list.indices.data(), list.indices.size());
    return list.count;
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
