#include "support/test_grid.h"
#include "terrain/mesh.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <new>
#include <random>

namespace {

/// A tree that consists of the root alone, flat, of the given level.
void MakeBareRoot(TerrainLod& terrain, std::int32_t level)
{
    terrain.RootCorner->Level = level;
    terrain.Root = terrain.NewNode(*terrain.RootCorner);
}

TEST(ActivateEdgeVertex, ReachesTheNeighbourAndCountsWithTheOwner)
{
    TerrainLod terrain;
    MakeBareRoot(terrain, 2);
    QuadNode& root = *terrain.Root;
    root.ActivateChild(1, *terrain.RootCorner);
    QuadCorner outer;
    root.MakeChildCorner(outer, *terrain.RootCorner, 1);
    root.Children[1]->ActivateChild(0, outer);
    QuadCorner inner;
    outer.Node->MakeChildCorner(inner, outer, 0);
    QuadNode& node = *inner.Node;
    EXPECT_EQ(node.EdgeUsers[0], 0);

    node.ActivateEdgeVertex(0, true, inner);
    EXPECT_EQ(node.EdgeUsers[0], 1);
    EXPECT_TRUE(node.ActiveMask & EdgeBit(0));
    ASSERT_TRUE(root.ActiveMask & ChildBit(0));
    ASSERT_TRUE(root.Children[0]->ActiveMask & ChildBit(1));
    const QuadNode& neighbour = *root.Children[0]->Children[1];
    EXPECT_EQ(neighbour.ActiveMask, EdgeBit(2));
    EXPECT_EQ(neighbour.EdgeUsers[0], 0);
    EXPECT_FALSE(neighbour.Pinned);

    node.ActivateEdgeVertex(0, false, inner);  // set already, and nobody takes a hold
    EXPECT_EQ(node.EdgeUsers[0], 1);
}

TEST(ActivateEdgeVertex, OnTheRimHasNoSecondSide)
{
    TerrainLod terrain;
    MakeBareRoot(terrain, 3);
    for (std::uint32_t edge = 0; edge < 4; ++edge)
        terrain.Root->ActivateEdgeVertex(edge, true, *terrain.RootCorner);
    EXPECT_EQ(terrain.Root->ActiveMask, 15);
    EXPECT_EQ(terrain.Root->EdgeUsers[0], 1);  // the west and north vertices are owned by neighbours that aren't there
    EXPECT_EQ(terrain.Root->EdgeUsers[1], 1);
    EXPECT_EQ(terrain.Nodes.BlocksUsed(), 1u);
}

TEST(ActivateChild, BringsMissingNeighboursIntoTheMesh)
{
    TerrainLod terrain;
    MakeBareRoot(terrain, 5);
    QuadCorner chain[5];
    QuadNode* node = terrain.Root;
    QuadCorner* at = terrain.RootCorner;
    const std::uint32_t way[5] = {1, 3, 3, 3, 3};  // down to the middle of the terrain
    for (int depth = 0; depth < 5; ++depth) {
        node->ActivateChild(way[depth], *at);
        node->MakeChildCorner(chain[depth], *at, way[depth]);
        at = &chain[depth];
        node = at->Node;
    }
    EXPECT_EQ(FindBrokenRule(terrain), "");
    EXPECT_EQ(FindCrack(ReadMesh(terrain)), "");
    EXPECT_GT(terrain.Nodes.BlocksUsed(), 6u);
}

TEST(ReleaseChild, GivesBackWhatActivateChildTook)
{
    for (std::uint32_t child = 0; child < 4; ++child) {
        TerrainLod terrain;
        MakeBareRoot(terrain, 2);
        QuadNode& root = *terrain.Root;
        for (std::uint32_t i = 0; i < 4; ++i)
            root.ActivateChild(i, *terrain.RootCorner);
        QuadCorner corner;
        root.MakeChildCorner(corner, *terrain.RootCorner, child);
        for (std::uint32_t i = 0; i < 4; ++i)
            corner.Node->ActivateChild(i, corner);
        for (std::uint32_t i = 0; i < 4; ++i) {
            corner.Node->ReleaseChild(corner, i);
            EXPECT_EQ(corner.Node->Children[i], nullptr);
            EXPECT_EQ(FindBrokenRule(terrain), "") << child << i;
        }
        EXPECT_EQ(corner.Node->EdgeUsers[0], 0);
        EXPECT_EQ(corner.Node->EdgeUsers[1], 0);
    }
}

TEST(ReleaseChild, KeepsAPinnedChild)
{
    const TestGrid grid(4, 4, [](int, int) { return 0.5f; });
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    terrain.Root->ReleaseChild(*terrain.RootCorner, 2);
    EXPECT_NE(terrain.Root->Children[2], nullptr);
    EXPECT_FALSE(terrain.Root->ActiveMask & ChildBit(2));
}

// Wherever memory runs out, the tree stays sound and later calls finish the work.
TEST(Activation, AFailedAllocationLeavesASoundTree)
{
    std::mt19937 random(7);
    int failures = 0;
    for (int round = 0; round < 60; ++round) {
        const auto width = static_cast<std::int32_t>(2 + random() % 40);
        const auto height = static_cast<std::int32_t>(2 + random() % 40);
        const auto seed = static_cast<std::uint32_t>(round);
        const TestGrid grid(width, height, [&](int x, int y) { return x > y ? 0.0f : HashNoise(x, y, seed); });
        TerrainLod terrain;
        terrain.InitQuadTree(grid.Source());
        terrain.SetLOD(400.0f);
        const auto update = [&](const Viewer& viewer) {
            try {
                terrain.Root->Update(*terrain.RootCorner, viewer, 0.0f);
            } catch (const std::bad_alloc&) {
                ++failures;
            }
        };
        for (int frame = 0; frame < 20; ++frame) {
            const Viewer viewer{static_cast<float>(random() % 60), 0.0f, static_cast<float>(random() % 60)};
            update({1e6f, 1e6f, 1e6f});  // sheds what is not pinned
            update({1e6f, 1e6f, 1e6f});
            terrain.Nodes.BlockLimit = terrain.Nodes.BlocksUsed() + random() % 12;
            update(viewer);
            EXPECT_EQ(FindBrokenRule(terrain), "");
            EXPECT_EQ(FindCrack(ReadMesh(terrain)), "");
            terrain.Nodes.BlockLimit = SIZE_MAX;
            update(viewer);
            EXPECT_EQ(FindBrokenRule(terrain), "");
        }
    }
    EXPECT_GT(failures, 50);
}

}  // namespace
