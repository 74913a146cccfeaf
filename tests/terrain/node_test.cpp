// One node and its surroundings, by hand: heights, corners, neighbours, figures and activation.

#include "support/test_grid.h"
#include "terrain/mesh.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <new>
#include <utility>

namespace {

void SetCorners(QuadCorner& corner, const float* heights)
{
    for (int i = 0; i < 4; ++i)
        corner.Corners[i].Height = heights[i];
}

/// A tree of three levels over an 8 x 8 grid, complete.
class NodeTest : public testing::Test {
protected:
    NodeTest() : grid(8, 8, [](int x, int y) { return 0.01f * static_cast<float>(1 + x + 8 * y); })
    {
        terrain.InitQuadTree(grid.Source());
    }
    /// Record of a node: child `way[0]` of the root, child `way[1]` of that, and so on.
    QuadCorner& At(std::initializer_list<std::uint32_t> way)
    {
        QuadCorner* corner = terrain.RootCorner;
        std::size_t depth = 0;
        for (const std::uint32_t child : way) {
            corner->Node->MakeChildCorner(corners[depth], *corner, child);
            corner = &corners[depth++];
        }
        return *corner;
    }
    TestGrid grid;
    TerrainLod terrain;
    std::array<QuadCorner, 5> corners;
};

TEST(QuadNode, ANewNodeLiesFlatOnItsCorners)
{
    const struct {
        float corners[4];
        float samples[5];
        float quadrantError;
    } cases[] = {
        {{4, 0, 4, 0}, {2, 2, 2, 2, 2}, 0.5f},
        {{1, 2, 4, 8}, {3.75f, 4.5f, 1.5f, 3, 6}, 5.0f / 16.0f},
    };
    for (const auto& c : cases) {
        TerrainLod terrain;
        QuadCorner corner;
        corner.Level = 1;
        SetCorners(corner, c.corners);
        const QuadNode* node = terrain.NewNode(corner);
        EXPECT_EQ(corner.Node, node);
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(node->Samples[i].Height, c.samples[i]);
        for (const float error : node->QuadrantError)
            EXPECT_EQ(error, c.quadrantError);
        EXPECT_EQ(node->LowHeight, *std::min_element(c.corners, c.corners + 4));
        EXPECT_EQ(node->HighHeight, *std::max_element(c.corners, c.corners + 4));
        EXPECT_FALSE(node->ActiveMask || node->Pinned);
    }
}

TEST_F(NodeTest, ChildCornersComeFromTheParentsSamples)
{
    const struct {
        std::uint32_t child;
        std::int32_t x;
        std::int32_t z;
        int samples[4];  // sample of the parent at each corner, -1 for the parent's own corner
    } cases[] = {
        {0, 4, 0, {-1, 2, 0, 1}}, {1, 0, 0, {2, -1, 3, 0}}, {2, 0, 4, {0, 3, -1, 4}}, {3, 4, 4, {1, 0, 4, -1}}};
    for (const auto& c : cases) {
        const QuadCorner& corner = At({c.child});
        EXPECT_EQ(std::pair(corner.OriginX, corner.OriginZ), std::pair(c.x, c.z));
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(corner.Corners[i].Height, c.samples[i] < 0 ? 0.0f : terrain.Root->Samples[c.samples[i]].Height);
    }
    QuadCorner out;
    EXPECT_FALSE(terrain.Root->MakeChildCorner(out, *terrain.RootCorner, 4));
    QuadCorner below;
    below.Level = -1;
    EXPECT_FALSE(terrain.Root->MakeChildCorner(out, below, 0));
}

TEST_F(NodeTest, NeighboursAreFoundAcrossParentsAndEndAtTheRim)
{
    QuadNode* const* top = terrain.Root->Children;
    const struct {
        std::uint32_t first;
        std::uint32_t second;
        std::uint32_t edge;
        QuadNode* neighbour;
    } cases[] = {{0, 2, 2, top[1]->Children[3]}, {0, 0, 0, nullptr},
                 {1, 3, 3, top[2]->Children[0]}, {3, 1, 1, top[0]->Children[2]},
                 {2, 1, 3, top[2]->Children[2]}, {1, 1, 1, nullptr}};
    for (const auto& c : cases)
        EXPECT_EQ(QuadNode::FindNeighbour(c.edge, At({c.first, c.second})), c.neighbour) << c.first << c.second;
    const std::int32_t count = terrain.Root->CountNodes();
    EXPECT_EQ(count, 1 + 4 + 16);
    terrain.FreeNode(std::exchange(top[1]->Children[3], nullptr));
    EXPECT_EQ(QuadNode::FindNeighbour(2, At({0, 2})), nullptr);  // and doesn't create it
    EXPECT_EQ(terrain.Root->CountNodes(), count - 1);
}

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

TEST(ComputeErrors, MeasuresALeafAgainstItsCoarserSurface)
{
    const struct {
        std::uint32_t childIndex;
        float corners[4];
        float samples[5];
        float vertexError[2];
        float quadrantError[4];
        float low;
        float high;
        float result;
    } cases[] = {
        {0, {0, 0, 0, 0}, {4, 2, 0, 0, 0}, {2, 0}, {0.5f, 1.0f, 1.0f, 0.5f}, 0, 4, 4},
        // The diagonal of an even child runs north-east to south-west, that of an odd one the other way.
        {0, {2, 0, 2, 0}, {2, 1, 1, 1, 1}, {0, 0}, {0.5f, 0, 0.5f, 0}, 0, 2, 0.5f},
        {1, {2, 0, 2, 0}, {2, 1, 1, 1, 1}, {0, 0}, {0.5f, 0, 0.5f, 0}, 0, 2, 2},
        // On a plane nothing is left out.
        {2, {3, 1, 2, 4}, {2.5f, 3.5f, 2, 1.5f, 3}, {0, 0}, {0, 0, 0, 0}, 1, 4, 0},
        // West and north vertices count for the bounds alone.
        {0, {0, 0, 0, 0}, {0, 0, 7, -5, 0}, {0, 0}, {1.75f, 0.5f, 1.25f, 0}, -5, 7, 1.75f},
    };
    for (const auto& c : cases) {
        TerrainLod terrain;
        QuadCorner corner;
        corner.ChildIndex = c.childIndex;
        QuadNode* node = terrain.NewNode(corner);
        SetCorners(corner, c.corners);
        for (int i = 0; i < 5; ++i)
            node->Samples[i].Height = c.samples[i];
        EXPECT_EQ(node->ComputeErrors(corner), c.result);
        EXPECT_TRUE(std::equal(c.vertexError, c.vertexError + 2, node->VertexError));
        EXPECT_TRUE(std::equal(c.quadrantError, c.quadrantError + 4, node->QuadrantError));
        EXPECT_EQ(std::pair(node->LowHeight, node->HighHeight), std::pair(c.low, c.high));
    }
}

/// A tree that consists of the root alone, flat, of the given level.
void MakeBareRoot(TerrainLod& terrain, std::int32_t level)
{
    terrain.RootCorner->Level = level;
    terrain.Root = terrain.NewNode(*terrain.RootCorner);
}

TEST_F(NodeTest, AnEdgeVertexIsTurnedOnOnBothSidesWithTheNeighbourMadeWhereItIsMissing)
{
    MakeBareRoot(terrain, 2);
    const QuadNode& root = *terrain.Root;
    terrain.Root->ActivateChild(1, *terrain.RootCorner);
    At({1}).Node->ActivateChild(0, At({1}));
    QuadCorner& corner = At({1, 0});
    corner.Node->ActivateEdgeVertex(0, corner);
    EXPECT_EQ(corner.Node->ActiveMask, EdgeBit(0));
    EXPECT_EQ(corner.Node->EdgeUsers[0], 0);  // nobody has taken a hold
    ASSERT_TRUE(root.ActiveMask & ChildBit(0));
    ASSERT_TRUE(root.Children[0]->ActiveMask & ChildBit(1));
    EXPECT_EQ(root.Children[0]->Children[1]->ActiveMask, EdgeBit(2));
    EXPECT_FALSE(root.Children[0]->Children[1]->Pinned);
}

TEST(ActivateEdgeVertex, OnTheRimHasNoSecondSide)
{
    TerrainLod terrain;
    MakeBareRoot(terrain, 3);
    for (std::uint32_t edge = 0; edge < 4; ++edge)
        terrain.Root->ActivateEdgeVertex(edge, *terrain.RootCorner);
    EXPECT_EQ(terrain.Root->ActiveMask, 15);
    EXPECT_EQ(terrain.Root->CountNodes(), 1);
}

TEST_F(NodeTest, ReleaseGivesBackWhatActivationTookAndKeepsPinnedChildren)
{
    for (std::uint32_t child = 0; child < 4; ++child) {
        TerrainLod bare;
        MakeBareRoot(bare, 2);
        for (std::uint32_t i = 0; i < 4; ++i)
            bare.Root->ActivateChild(i, *bare.RootCorner);
        QuadCorner corner;
        bare.Root->MakeChildCorner(corner, *bare.RootCorner, child);
        for (std::uint32_t i = 0; i < 4; ++i)
            corner.Node->ActivateChild(i, corner);
        for (std::uint32_t i = 0; i < 4; ++i) {
            corner.Node->ReleaseChild(corner, i);
            EXPECT_EQ(corner.Node->Children[i], nullptr);
            EXPECT_EQ(FindBrokenRule(bare), "") << child << i;
        }
    }
    terrain.Root->ReleaseChild(*terrain.RootCorner, 2);
    EXPECT_NE(terrain.Root->Children[2], nullptr);
    EXPECT_FALSE(terrain.Root->ActiveMask & ChildBit(2));
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
