// Heights between the samples of a tree, and the memory of its nodes.

#include "support/test_grid.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <cmath>
#include <new>

namespace {

/// A tree of three levels over an 8 x 8 grid, complete.
class NodeTest : public testing::Test {
protected:
    NodeTest() : grid(8, 8, [](int x, int y) { return 0.01f * static_cast<float>(1 + x + 8 * y); })
    {
        terrain.InitQuadTree(grid.Source());
    }

    TestGrid grid;
    TerrainLod terrain;
};

TEST_F(NodeTest, HeightIsThatOfTheGridAtItsPointsAndBilinearBetween)
{
    QuadCorner out;
    const auto heightAt = [&](float x, float z) { return terrain.Root->HeightAt(*terrain.RootCorner, x, z, out); };
    EXPECT_EQ(heightAt(3.0f, 5.0f), grid.At(3, 5).value);
    EXPECT_EQ(std::pair(out.OriginX, out.OriginZ), std::pair(2, 4));
    EXPECT_FLOAT_EQ(heightAt(4.25f, 3.5f), 0.01f * (1.0f + 4.25f + 8.0f * 3.5f));
    EXPECT_EQ(heightAt(0.0f, 0.0f), 0.0f);  // a corner of the root
    EXPECT_EQ(heightAt(-50.0f, 5.0f), grid.At(0, 5).value);
    EXPECT_EQ(heightAt(500.0f, 5.0f), grid.At(7, 5).value);
    EXPECT_EQ(heightAt(NAN, 5.0f), grid.At(0, 5).value);

    const TestGrid flat(8, 8, [](int, int) { return 0.0f; });  // without a pinned node to descend to
    terrain.InitQuadTree(flat.Source());
    out.Level = 77;
    EXPECT_EQ(heightAt(3.0f, 3.0f), 0.0f);
    EXPECT_EQ(out.Level, 77);
}

TEST(NodePool, ReusesFreedBlocksAndStopsAtItsLimit)
{
    NodePool pool(112);
    void* first = pool.Allocate();
    pool.Allocate();
    pool.Free(first);
    EXPECT_EQ(pool.Allocate(), first);
    EXPECT_EQ(pool.BlocksUsed(), 2u);
    pool.BlockLimit = 2;
    EXPECT_THROW(pool.Allocate(), std::bad_alloc);
    pool.BlockLimit = SIZE_MAX;
    for (int i = 0; i < 1000; ++i)
        pool.Allocate();
    EXPECT_GE(pool.BytesHeld(), 1002u * 112u);
    const std::size_t held = pool.BytesHeld();
    pool.Recycle();
    for (int i = 0; i < 1002; ++i)
        pool.Allocate();
    EXPECT_EQ(pool.BytesHeld(), held);  // in the same memory
    pool.Recycle();
    pool.Allocate();
    pool.ReleaseSpare();
    EXPECT_LT(pool.BytesHeld(), held / 2);
    pool.Release();
    EXPECT_EQ(pool.BytesHeld() + pool.BlocksUsed(), 0u);
}

}  // namespace
