#include "support/test_grid.h"
#include "terrain/mesh.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace {

TEST(SampleAt, ClampsIntoTheGridAndInterpolatesWhereACellIsSeveralUnitsWide)
{
    const TestGrid grid(4, 3, [](int x, int y) { return static_cast<float>(100 * y + 4 * x); });
    HeightSource source = grid.Source();
    EXPECT_EQ(source.SampleAt(2, 1), 108.0f);
    EXPECT_EQ(source.SampleAt(4, 1), 112.0f);
    EXPECT_EQ(source.SampleAt(-3, 9), 200.0f);
    source.Scale = 2;
    source.OriginX = 8;
    EXPECT_EQ(source.SampleAt(8 + 5, 0), 5.0f);
    EXPECT_EQ(source.SampleAt(8 + 2, 2), 52.0f);
    EXPECT_EQ(source.SampleAt(8 + 15, 8), 212.0f);  // past the last column: the edge's own value
    EXPECT_EQ(source.SampleAt(7, 0), 3.0f);         // the remainder counts west of the grid too
    source.Width = 0;
    EXPECT_EQ(source.SampleAt(0, 0), 0.0f);
}

TEST(InitQuadTree, ASizeBeyondTheLimitLeavesNoTree)
{
    const TestGrid grid(4, 4, [](int, int) { return 0.5f; });
    HeightSource source = grid.Source();
    source.Width = (1 << 30) + 1;
    TerrainLod terrain;
    EXPECT_THROW(terrain.InitQuadTree(source), std::length_error);
    EXPECT_EQ(terrain.Root, nullptr);
}

TEST(InitQuadTree, AFailedAllocationAnywhereLeavesNoTreeAndNoMemory)
{
    const TestGrid grid(20, 13, [](int x, int y) { return HashNoise(x, y, 5); });
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    const std::size_t needed = terrain.Nodes.BlocksUsed();
    for (std::size_t limit = 0; limit < needed; ++limit) {
        terrain.Nodes.BlockLimit = limit;
        EXPECT_THROW(terrain.InitQuadTree(grid.Source()), std::bad_alloc);
        EXPECT_EQ(terrain.Nodes.BytesHeld(), 0u);
        EXPECT_THROW(terrain.Build3D(), std::bad_alloc);
        EXPECT_EQ(terrain.Root, nullptr);
    }
    terrain.Nodes.BlockLimit = SIZE_MAX;
    terrain.Build3D();
    EXPECT_EQ(terrain.Nodes.BlocksUsed(), needed);
    terrain.ForgetSource();
    EXPECT_EQ(terrain.Nodes.BytesHeld(), 0u);
}

TEST(Build3D, FollowsTheGridAndKeepsTheSettings)
{
    TestGrid grid(9, 9, [](int x, int y) { return HashNoise(x, y, 1); });
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    terrain.SetRenderMode(1);
    terrain.Update({1e6f, 0.0f, 1e6f});
    grid.At(3, 3).value = 9.0f;
    terrain.Build3D();
    EXPECT_EQ(terrain.Root->HighHeight, 9.0f);
    EXPECT_EQ(terrain.GetRenderMode(), 1);
    TerrainLod fresh;
    fresh.InitQuadTree(grid.Source());
    EXPECT_EQ(ReadTree(terrain), ReadTree(fresh));
}

TEST(SetLOD, TakesTheScaleOfItsMoment)
{
    TerrainLod terrain;
    terrain.SetElevationScale(10.0f);
    EXPECT_EQ(terrain.ScaledLodFactor, 150.0f);
    terrain.SetLOD(2.0f);
    terrain.SetElevationScale(60.0f);
    EXPECT_EQ(terrain.ScaledLodFactor, 20.0f);
    EXPECT_EQ(terrain.GetLOD(), 2.0f);
}

}  // namespace
