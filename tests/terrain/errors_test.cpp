#include "support/test_grid.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    std::uint32_t childIndex;
    float corners[4];
    float samples[5];
    float vertexError[2];
    float quadrantError[4];
    float low;
    float high;
    float result;
};

TEST(ComputeErrors, MeasuresALeafAgainstItsCoarserSurface)
{
    const Case cases[] = {
        {0, {0, 0, 0, 0}, {4, 2, 0, 0, 0}, {2, 0}, {0.5f, 1.0f, 1.0f, 0.5f}, 0, 4, 4},
        {1, {0, 0, 0, 0}, {4, 2, 0, 0, 0}, {2, 0}, {0.5f, 1.0f, 1.0f, 0.5f}, 0, 4, 4},
        // The diagonal of an even child runs north-east to south-west, that of an odd one the other way.
        {0, {2, 0, 2, 0}, {2, 1, 1, 1, 1}, {0, 0}, {0.5f, 0, 0.5f, 0}, 0, 2, 0.5f},
        {1, {2, 0, 2, 0}, {2, 1, 1, 1, 1}, {0, 0}, {0.5f, 0, 0.5f, 0}, 0, 2, 2},
        // On a plane nothing is left out.
        {2, {3, 1, 2, 4}, {2.5f, 3.5f, 2, 1.5f, 3}, {0, 0}, {0, 0, 0, 0}, 1, 4, 0},
        // West and north vertices count for the bounds alone.
        {0, {0, 0, 0, 0}, {0, 0, 7, -5, 0}, {0, 0}, {1.75f, 0.5f, 1.25f, 0}, -5, 7, 1.75f},
    };
    for (const Case& c : cases) {
        TerrainLod terrain;
        QuadCorner corner;
        corner.ChildIndex = c.childIndex;
        QuadNode* node = terrain.NewNode(corner);
        for (int i = 0; i < 4; ++i)
            corner.Corners[i].Height = c.corners[i];
        for (int i = 0; i < 5; ++i)
            node->Samples[i].Height = c.samples[i];
        node->Changed = true;
        EXPECT_EQ(node->ComputeErrors(corner), c.result);
        EXPECT_EQ(node->VertexError[0], c.vertexError[0]);
        EXPECT_EQ(node->VertexError[1], c.vertexError[1]);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(node->QuadrantError[i], c.quadrantError[i]) << i;
        EXPECT_EQ(node->LowHeight, c.low);
        EXPECT_EQ(node->HighHeight, c.high);
        EXPECT_FALSE(node->Changed);
        terrain.FreeNode(node);
    }
}

TEST(ComputeErrors, AQuadrantWithAChildTakesTheChildsLargestErrorAndBounds)
{
    TestGrid grid(8, 8, [](int, int) { return 0.0f; });
    grid.At(5, 1).value = 1.0f;
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    const QuadNode& root = *terrain.Root;
    EXPECT_EQ(root.QuadrantError[0], 1.0f);  // the spike is the centre of a leaf in the north-east
    EXPECT_EQ(root.QuadrantError[1], 0.0f);
    EXPECT_EQ(root.HighHeight, 1.0f);
    EXPECT_EQ(root.Children[0]->QuadrantError[1], 1.0f);
    EXPECT_EQ(root.Children[0]->QuadrantError[0], 0.0f);
}

}  // namespace
