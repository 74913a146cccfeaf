#include "terrain/quad_patch.h"

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

QuadPatch::QuadPatch(TerrainLod& terrain)
    : terrain_(terrain),
      width_(static_cast<float>(terrain.Source.Width)),
      height_(static_cast<float>(terrain.Source.Height)),
      useColor_(terrain.UseVertexColor)
{
    const ElevationPalette* palette = terrain.Source.Palette;
    for (std::int16_t i = 0; useColor_ && i < 256; ++i) {
        colors_[i][0] = palette ? palette->GetRed(i) : 255;
        colors_[i][1] = palette ? palette->GetGreen(i) : 255;
        colors_[i][2] = palette ? palette->GetBlue(i) : 255;
        colors_[i][3] = 255;
    }
}

void QuadPatch::WriteVertices(const QuadCorner& corner, const QuadSample* samples)
{
    const float west = static_cast<float>(corner.OriginX);
    const float middleX = static_cast<float>(corner.OriginX + corner.HalfSide());
    const float east = static_cast<float>(corner.OriginX + corner.Side());
    const float north = static_cast<float>(corner.OriginZ);
    const float middleZ = static_cast<float>(corner.OriginZ + corner.HalfSide());
    const float south = static_cast<float>(corner.OriginZ + corner.Side());
    SetVertex(0, middleX, samples[0].Height, middleZ);
    SetVertex(1, east, samples[1].Height, middleZ);
    SetVertex(2, east, corner.Corners[0].Height, north);
    SetVertex(3, middleX, samples[2].Height, north);
    SetVertex(4, west, corner.Corners[1].Height, north);
    SetVertex(5, west, samples[3].Height, middleZ);
    SetVertex(6, west, corner.Corners[2].Height, south);
    SetVertex(7, middleX, samples[4].Height, south);
    SetVertex(8, east, corner.Corners[3].Height, south);
}

/// Clamps the position into the grid and stores it with the palette colour of its grid element and its place in the
/// source texture. The colour follows the grid, not y.
void QuadPatch::SetVertex(std::uint32_t index, float x, float y, float z)
{
    const auto clampTo = [](float value, float size) {
        if (value < 0.0f)
            return 0.0f;
        return value >= size ? size - 1.0f : value;
    };
    x = clampTo(x, width_);
    z = clampTo(z, height_);
    terrain_.VertexArray[index][0] = x;
    terrain_.VertexArray[index][1] = y;
    terrain_.VertexArray[index][2] = z;
    if (useColor_) {
        const HeightSource& source = terrain_.Source;
        // A float can't hold every column of a very wide grid: the last one may have been rounded up.
        const auto column = std::min(static_cast<std::ptrdiff_t>(x), std::ptrdiff_t{source.Width} - 1);
        const auto row = std::min(static_cast<std::ptrdiff_t>(z), std::ptrdiff_t{source.Height} - 1);
        const float elevation = source.Grid[column + row * source.Stride].value;
        const std::int32_t entry = source.Palette ? source.Palette->IndexOf(elevation) : 0;
        std::memcpy(terrain_.ColorArray[index], colors_[entry < 0 ? 0 : entry > 255 ? 255 : entry], 4);
    }
    terrain_.TexCoordArray[index][0] = x / width_;
    terrain_.TexCoordArray[index][1] = z / height_;
}

std::uint32_t QuadPatch::WriteIndices(std::uint8_t activeMask)
{
    const TriangleList& list = kTriangles[activeMask];
    std::memcpy(terrain_.IndexArray, list.indices.data(), list.indices.size());
    return list.count;
}

void QuadPatch::WriteNormals(std::uint32_t indexCount)
{
    for (std::uint32_t i = 0; i < indexCount; i += 3) {
        const std::uint8_t* at = terrain_.IndexArray + i;
        float normal[3];
        FaceNormal(terrain_.VertexArray[at[0]], terrain_.VertexArray[at[1]], terrain_.VertexArray[at[2]], normal);
        for (std::uint32_t corner = 0; corner < 3; ++corner)
            std::memcpy(terrain_.NormalArray[at[corner]], normal, sizeof(normal));
    }
}

void QuadPatch::Draw(std::uint32_t indexCount) const
{
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(indexCount), GL_UNSIGNED_BYTE, terrain_.IndexArray);
}

void QuadPatch::WriteText(std::uint32_t indexCount, std::FILE* stream) const
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
