// Whole flights, bit for bit: every triangle of every frame with its positions, normals, colours and texture
// coordinates, in the order in which it is drawn.

#include "support/recording_gl.h"
#include "support/test_grid.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <bit>

namespace {

using tessara::test::DrawnElements;
using tessara::test::RecordingGl;

/// A running hash (FNV-1a) of 32-bit words.
class Hash {
public:
    void Add(std::uint32_t word)
    {
        for (int shift = 0; shift < 32; shift += 8)
            value_ = (value_ ^ (word >> shift & 255)) * 1099511628211u;
    }
    void Add(float number) { Add(std::bit_cast<std::uint32_t>(number)); }
    template <class Container>
    void AddAll(const Container& container)
    {
        for (const auto& entry : container) {
            if constexpr (requires { entry.begin(); })
                AddAll(entry);
            else if constexpr (std::is_same_v<std::decay_t<decltype(entry)>, float>)
                Add(entry);
            else
                Add(static_cast<std::uint32_t>(entry));
        }
    }
    std::uint64_t Value() const { return value_; }

private:
    std::uint64_t value_ = 14695981039346656037u;
};

enum Heights { Noise, Hills, Islands, Spikes };
enum View { Open, Wedge };
enum Edits { None, Points, Everything };  // edits are made in the real-time mode

std::function<float(std::int32_t, std::int32_t)> MakeHeights(Heights kind, std::uint32_t seed)
{
    switch (kind) {
    case Noise:
        return [seed](int x, int y) { return HashNoise(x, y, seed); };
    case Hills:
        return FractalHeights(64, seed);
    case Islands:  // in a sea of exact zeros, where no node is pinned
        return [seed](int x, int y) { return HashNoise(x / 9, y / 9, seed) < 0.6f ? 0.0f : HashNoise(x, y, seed); };
    default:  // also below zero
        return [seed](int x, int y) { return HashNoise(x, y, seed) < 0.97f ? 0.5f : HashNoise(y, x, seed) * 8 - 4; };
    }
}

struct Flight {
    const char* name;
    std::int32_t width;
    std::int32_t height;
    Heights heights;
    float factor;
    Viewer from;
    Viewer step;  // in each frame
    View view;
    Edits edits;
    std::size_t triangles;  // of all frames
    std::uint64_t hash;
};

constexpr int kFrames = 14;

/// Looks to the south-east from beside the viewer, with an upper end: no symmetry, and all three results of BoxTest.
TerrainFrustum MakeFrustum(View view, const Viewer& viewer)
{
    TerrainFrustum frustum;
    for (FrustumPlane& plane : frustum.WorldPlanes)
        plane = {0.0f, 1.0f, 0.0f, -1e9f};
    if (view == Wedge) {
        frustum.WorldPlanes[2] = {0.8f, 0.1f, -0.55f, 0.8f * viewer.x - 0.55f * viewer.z - 9.0f};
        frustum.WorldPlanes[3] = {-0.35f, 0.05f, 0.9f, 0.9f * viewer.z - 0.35f * viewer.x - 4.0f};
        frustum.WorldPlanes[4] = {0.1f, -1.0f, -0.05f, -11.0f};
    }
    return frustum;
}

void Edit(TestGrid& grid, const Flight& flight, int frame)
{
    if (flight.edits == Everything && frame % 4 == 2)
        grid.Fill(MakeHeights(flight.heights, static_cast<std::uint32_t>(100 + frame)));
    for (int i = 0; flight.edits == Points && i < 3; ++i)
        grid.At((frame * 13 + i * 29) % flight.width, (frame * 7 + i * 31) % flight.height).value += 0.25f;
}

/// \return the number of triangles of all frames \param hash of everything drawn
std::size_t Fly(const Flight& flight, Hash& hash)
{
    TestGrid grid(flight.width, flight.height, MakeHeights(flight.heights, 5));
    grid.palette.ResetRamp();
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    terrain.SetElevationScale(8.0f);
    terrain.SetLOD(flight.factor);
    terrain.SetTranslation3D(0.5f, -1.0f, 0.25f);
    terrain.UseTextureSource(true);
    terrain.SetRenderMode(flight.edits == None ? 0 : 1);
    std::size_t triangles = 0;
    Viewer viewer = flight.from;
    for (int frame = 0; frame < kFrames; ++frame) {
        Edit(grid, flight, frame);
        const TerrainFrustum frustum = MakeFrustum(flight.view, viewer);
        RecordingGl::Reset();
        terrain.Draw(viewer.x, viewer.y, viewer.z, &frustum);
        for (const DrawnElements& drawn : RecordingGl::Get().drawn) {
            triangles += drawn.indices.size() / 3;
            hash.AddAll(drawn.indices);
            hash.AddAll(drawn.vertices);
            hash.AddAll(drawn.normals);
            hash.AddAll(drawn.colors);
            hash.AddAll(drawn.texCoords[0]);
        }
        viewer = {viewer.x + flight.step.x, viewer.y + flight.step.y, viewer.z + flight.step.z};
    }
    return triangles;
}

const Flight kFlights[] = {
    {"square", 64, 64, Noise, 2.0f, {11, 3, 47}, {2.3f, 0.1f, -1.7f}, Open, None, 15395, 0x6ef9baf8e47685a4u},
    {"2^5 + 1", 33, 33, Hills, 30.0f, {25, 1.5f, 6}, {-1.1f, 0.3f, 1.9f}, Open, None, 15564, 0x8cc60610d599a3a5u},
    {"wide", 71, 19, Hills, 40.0f, {3, 0.4f, 17}, {4.4f, 0, -0.7f}, Wedge, None, 8401, 0xd126f926dfac80eu},
    {"tall", 13, 58, Noise, 1.5f, {9, 6, 2}, {-0.4f, -0.3f, 3.1f}, Wedge, None, 4782, 0x59062ff3ea3ab08cu},
    {"from above", 40, 57, Hills, 45.0f, {31, 29, 13}, {0.2f, -1.9f, 0.3f}, Open, None, 19098, 0x769d5a64a6f4c7d9u},
    {"along z", 48, 66, Spikes, 3.0f, {20, 0.5f, -70}, {0.3f, 0, 9}, Open, None, 19096, 0x3377cf59361174a3u},
    {"along x", 66, 48, Spikes, 3.0f, {-70, 0.5f, 31}, {9, 0, 0.3f}, Wedge, None, 4483, 0x9a4e709a8cbc040eu},
    {"islands", 61, 45, Islands, 6.0f, {50, 2, 40}, {-3.9f, 0.2f, -2.2f}, Open, None, 25062, 0xd2e038aeb17ddd21u},
    {"at rest", 37, 52, Hills, 25.0f, {30, 1, 8}, {0, 0, 0}, Open, Points, 12794, 0x34019019cf4460d0u},
    {"edits", 69, 35, Islands, 9.0f, {8, 1, 30}, {3.3f, 0.1f, -1.2f}, Wedge, Points, 7936, 0x8788e7569360821au},
    {"new grids", 31, 44, Noise, 2.5f, {28, 4, 3}, {-0.9f, -0.1f, 2.6f}, Open, Everything, 14814, 0x69f57910134bb34fu},
};

TEST(Flight, DrawsTheSameMeshToTheLastBit)
{
    for (const Flight& flight : kFlights) {
        Hash hash;
        const std::size_t triangles = Fly(flight, hash);
        EXPECT_EQ(triangles, flight.triangles) << flight.name;
        EXPECT_EQ(hash.Value(), flight.hash) << flight.name << std::hex << " 0x" << hash.Value();
    }
}

}  // namespace
