#include "support/test_grid.h"
#include "terrain/quad_node.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <new>

namespace {

void SetCorners(QuadCorner& corner, float c0, float c1, float c2, float c3)
{
    const float heights[4] = {c0, c1, c2, c3};
    for (int i = 0; i < 4; ++i)
        corner.Corners[i].Height = heights[i];
}

/// A tree of three levels over an 8 x 8 grid, complete.
class QuadNodeTest : public testing::Test {
protected:
    QuadNodeTest() : grid(8, 8, [](int x, int y) { return 0.01f * static_cast<float>(1 + x + 8 * y); })
    {
        terrain.InitQuadTree(grid.Source());
    }
    /// Record of the root's child `first`, and with `second` of a child of that.
    QuadCorner& Child(std::uint32_t first)
    {
        terrain.Root->MakeChildCorner(outer, *terrain.RootCorner, first);
        return outer;
    }
    QuadCorner& Child(std::uint32_t first, std::uint32_t second)
    {
        Child(first).Node->MakeChildCorner(inner, outer, second);
        return inner;
    }
    TestGrid grid;
    TerrainLod terrain;
    QuadCorner outer;
    QuadCorner inner;
};

TEST(QuadNode, NewNodeLiesFlatOnItsCorners)
{
    struct Case {
        float corners[4];
        float samples[5];
        float quadrantError;
        float low;
        float high;
    };
    const Case cases[] = {
        {{0, 0, 0, 0}, {0, 0, 0, 0, 0}, 0.0f, 0, 0},
        {{4, 0, 4, 0}, {2, 2, 2, 2, 2}, 0.5f, 0, 4},
        {{1, 2, 4, 8}, {3.75f, 4.5f, 1.5f, 3, 6}, 5.0f / 16.0f, 1, 8},
    };
    for (const Case& c : cases) {
        TerrainLod terrain;
        QuadCorner corner;
        corner.Level = 1;
        SetCorners(corner, c.corners[0], c.corners[1], c.corners[2], c.corners[3]);
        QuadNode* node = terrain.NewNode(corner);
        EXPECT_EQ(corner.Node, node);
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(node->Samples[i].Height, c.samples[i]);
        for (const float error : node->QuadrantError)
            EXPECT_EQ(error, c.quadrantError);
        EXPECT_EQ(node->LowHeight, c.low);
        EXPECT_EQ(node->HighHeight, c.high);
        EXPECT_EQ(node->ActiveMask, 0);
        EXPECT_FALSE(node->Pinned);
        terrain.FreeNode(node);
    }
}

TEST_F(QuadNodeTest, ChildCornersComeFromTheParentsSamples)
{
    struct Case {
        std::uint32_t child;
        std::int32_t x;
        std::int32_t z;
        int samples[4];  // sample of the parent at each corner, -1 for the parent's own corner
    };
    const Case cases[] = {
        {0, 4, 0, {-1, 2, 0, 1}}, {1, 0, 0, {2, -1, 3, 0}}, {2, 0, 4, {0, 3, -1, 4}}, {3, 4, 4, {1, 0, 4, -1}}};
    SetCorners(*terrain.RootCorner, 10, 11, 12, 13);
    for (const Case& c : cases) {
        const QuadCorner& corner = Child(c.child);
        EXPECT_EQ(corner.OriginX, c.x);
        EXPECT_EQ(corner.OriginZ, c.z);
        EXPECT_EQ(corner.Level, 1);
        EXPECT_EQ(corner.Parent, terrain.RootCorner);
        for (int i = 0; i < 4; ++i) {
            const float expected = c.samples[i] < 0 ? terrain.RootCorner->Corners[c.child].Height
                                                    : terrain.Root->Samples[c.samples[i]].Height;
            EXPECT_EQ(corner.Corners[i].Height, expected) << "child " << c.child << " corner " << i;
        }
    }
    EXPECT_FALSE(terrain.Root->MakeChildCorner(outer, *terrain.RootCorner, 4));
    QuadCorner below;
    below.Level = -1;
    EXPECT_FALSE(terrain.Root->MakeChildCorner(outer, below, 0));
}

TEST_F(QuadNodeTest, NeighboursAreFoundAcrossParentsAndEndAtTheRim)
{
    QuadNode* const* top = terrain.Root->Children;
    struct Case {
        std::uint32_t first;
        std::uint32_t second;
        std::uint32_t edge;
        QuadNode* neighbour;
    };
    const Case cases[] = {
        {0, 2, 2, top[1]->Children[3]},
        {0, 1, 2, top[1]->Children[0]},
        {0, 0, 0, nullptr},
        {1, 0, 0, top[0]->Children[1]},
        {1, 0, 2, top[1]->Children[1]},
        {1, 3, 3, top[2]->Children[0]},
        {2, 0, 1, top[1]->Children[3]},
        {3, 1, 1, top[0]->Children[2]},
        {3, 1, 2, top[2]->Children[0]},
        {3, 3, 3, nullptr},
        {2, 1, 3, top[2]->Children[2]},
        {1, 1, 1, nullptr},
    };
    for (const Case& c : cases)
        EXPECT_EQ(QuadNode::FindNeighbour(c.edge, Child(c.first, c.second)), c.neighbour)
            << c.first << c.second << " edge " << c.edge;
    EXPECT_EQ(QuadNode::FindNeighbour(1, Child(0)), nullptr);
    EXPECT_EQ(QuadNode::FindNeighbour(3, Child(0)), top[3]);
    EXPECT_EQ(QuadNode::FindNeighbour(0, *terrain.RootCorner), nullptr);
    const std::int32_t count = terrain.Root->CountNodes();
    EXPECT_EQ(count, 1 + 4 + 16);
    terrain.FreeNode(std::exchange(top[1]->Children[3], nullptr));
    EXPECT_EQ(QuadNode::FindNeighbour(2, Child(0, 2)), nullptr);  // and doesn't create it
    EXPECT_EQ(terrain.Root->CountNodes(), count - 1);
}

TEST_F(QuadNodeTest, HeightIsThatOfTheGridAtItsPointsAndBilinearBetween)
{
    QuadCorner out;
    const auto heightAt = [&](float x, float z) { return terrain.Root->HeightAt(*terrain.RootCorner, x, z, out); };
    EXPECT_EQ(heightAt(3.0f, 5.0f), grid.At(3, 5).value);
    EXPECT_EQ(out.Level, 0);
    EXPECT_EQ(out.OriginX, 2);
    EXPECT_EQ(out.OriginZ, 4);
    EXPECT_FLOAT_EQ(heightAt(4.5f, 3.0f), (grid.At(4, 3).value + grid.At(5, 3).value) / 2);
    EXPECT_FLOAT_EQ(heightAt(4.25f, 3.5f), 0.01f * (1.0f + 4.25f + 8.0f * 3.5f));
    EXPECT_EQ(heightAt(0.0f, 0.0f), 0.0f);  // a corner of the root
    EXPECT_EQ(heightAt(-50.0f, 5.0f), grid.At(0, 5).value);
    EXPECT_EQ(heightAt(500.0f, 5.0f), grid.At(7, 5).value);
    EXPECT_EQ(heightAt(NAN, 5.0f), grid.At(0, 5).value);
}

TEST_F(QuadNodeTest, HeightStopsAtNodesThatAreNotPinned)
{
    const TestGrid flat(8, 8, [](int, int) { return 0.0f; });
    terrain.InitQuadTree(flat.Source());
    QuadCorner out;
    out.Level = 77;
    EXPECT_EQ(terrain.Root->HeightAt(*terrain.RootCorner, 3.0f, 3.0f, out), 0.0f);
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
    pool.Clear();
    EXPECT_EQ(pool.BytesHeld(), 0u);
    EXPECT_EQ(pool.BlocksUsed(), 0u);
}

}  // namespace
