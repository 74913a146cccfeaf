#include "support/test_grid.h"
#include "terrain/mesh.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

namespace {

constexpr Viewer kFarAway{1000.0f, 1000.0f, 1000.0f};

void Update(TerrainLod& terrain, const Viewer& viewer, int frames = 1)
{
    for (int i = 0; i < frames; ++i)
        terrain.Root->Update(*terrain.RootCorner, viewer, 0.0f);
}

TEST(VertexNeedsDetail, ComparesWithTheLargestAxisDistance)
{
    TerrainLod terrain;
    terrain.RootCorner->Level = 1;
    const QuadNode* node = terrain.NewNode(*terrain.RootCorner);
    const Viewer viewer{0.0f, 100.0f, 0.0f};
    EXPECT_TRUE(node->VertexNeedsDetail(128.0f, 0.4f, 64.0f, 1.0f, viewer));
    terrain.ScaledLodFactor = 128.0f;
    EXPECT_FALSE(node->VertexNeedsDetail(128.0f, 0.4f, 64.0f, 1.0f, viewer));  // equal is not above
}

TEST(BoxNeedsDetail, MeasuresTheDistanceToTheBox)
{
    TerrainLod terrain;
    terrain.RootCorner->Level = 1;
    const QuadNode* node = terrain.NewNode(*terrain.RootCorner);
    const Viewer outside{100.0f, 50.0f, 32.0f};
    EXPECT_TRUE(node->BoxNeedsDetail(0, 0, 64, 0.1f, 0.3f, 0.5f, outside));    // 75 above 49.7
    EXPECT_FALSE(node->BoxNeedsDetail(0, 0, 64, 0.1f, 0.3f, 0.33f, outside));  // 49.5 is not
    EXPECT_FALSE(node->BoxNeedsDetail(0, 0, 64, 0.1f, 0.3f, 0.0f, outside));
    EXPECT_TRUE(node->BoxNeedsDetail(0, 0, 64, 0.1f, 0.3f, 0.0f, {10.0f, 0.2f, 10.0f}));   // inside, even without error
    EXPECT_FALSE(node->BoxNeedsDetail(0, 0, 64, 0.2f, 0.2f, 0.0f, {10.0f, 0.2f, 10.0f}));  // on a box without height
}

TEST(Update, AWholeSmallCycle)
{
    const TestGrid grid(4, 4, [](int, int) { return 0.5f; });
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    QuadNode& root = *terrain.Root;
    EXPECT_EQ(root.ActiveMask, 255);
    EXPECT_EQ(root.EdgeUsers[0], 2);
    EXPECT_EQ(root.EdgeUsers[1], 2);
    EXPECT_EQ(root.VertexError[0], 0.5f);
    EXPECT_EQ(root.VertexError[1], 0.5f);
    for (const float error : root.QuadrantError)
        EXPECT_EQ(error, 0.25f);
    EXPECT_EQ(CountTriangles(terrain), 16u);

    Update(terrain, kFarAway);
    EXPECT_EQ(root.ActiveMask, 6);
    EXPECT_EQ(root.EdgeUsers[0], 0);
    EXPECT_EQ(root.EdgeUsers[1], 0);
    EXPECT_EQ(CountTriangles(terrain), 6u);
    EXPECT_EQ(root.CountNodes(), 5);  // the leaves are pinned
}

TEST(Update, SettlesAtTheRimsOwnCountWhenTheViewerIsFar)
{
    const std::pair<int, std::size_t> cases[] = {{16, 46}, {32, 106}, {64, 230}, {128, 482}};
    for (const auto& [side, triangles] : cases) {
        for (const std::uint32_t seed : {1u, 2u}) {
            const TestGrid grid(side, side, [&](int x, int y) { return 0.05f + 0.9f * HashNoise(x, y, seed); });
            TerrainLod terrain;
            terrain.InitQuadTree(grid.Source());
            Update(terrain, {1e6f, 1e6f, 1e6f}, 12);
            EXPECT_EQ(CountTriangles(terrain), triangles) << side;
            EXPECT_EQ(FindBrokenRule(terrain), "");
        }
    }
}

TEST(Update, ASettledTreeStaysAsItIs)
{
    const TestGrid grid(65, 65, FractalHeights(64));
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    terrain.SetElevationScale(12.0f);
    terrain.SetLOD(30.0f);
    const Viewer viewer{20.0f, 10.0f, 30.0f};
    Update(terrain, viewer, 15);
    const auto settled = Activity(terrain);
    const std::size_t nodes = terrain.Nodes.BlocksUsed();
    Update(terrain, viewer, 3);
    EXPECT_EQ(Activity(terrain), settled);
    EXPECT_EQ(terrain.Nodes.BlocksUsed(), nodes);
}

TEST(Update, ALargerFactorNeverTakesDetailAway)
{
    const TestGrid grid(64, 64, FractalHeights(64));
    std::size_t last = 0;
    for (const float factor : {0.0f, 20.0f, 80.0f, 320.0f, 5000.0f}) {
        TerrainLod terrain;
        terrain.InitQuadTree(grid.Source());
        terrain.ScaledLodFactor = factor;
        Update(terrain, {10.0f, 40.0f, 10.0f}, 12);
        const std::size_t triangles = CountTriangles(terrain);
        EXPECT_GE(triangles, last) << factor;
        last = triangles;
    }
    EXPECT_GT(last, 3000u);
}

TEST(Update, InTheNormalModeKeepsTheHeightsOfTheBuild)
{
    TestGrid grid(16, 16, [](int x, int y) { return HashNoise(x, y, 2); });
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    const float before = terrain.Root->Samples[0].Height;
    grid.At(8, 8).value = 5.0f;
    Update(terrain, {8.0f, 0.0f, 8.0f});
    EXPECT_EQ(terrain.Root->Samples[0].Height, before);
}

TEST(Update, InTheRealTimeModeFollowsTheGrid)
{
    TestGrid grid(32, 32, [](int x, int y) { return 0.2f + 0.01f * HashNoise(x, y, 2); });
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    terrain.SetRenderMode(1);
    Update(terrain, {1e6f, 1e6f, 1e6f}, 8);
    const std::size_t coarse = CountTriangles(terrain);

    grid.Fill([](int x, int y) { return HashNoise(x, y, 9); });
    terrain.ScaledLodFactor = 1000.0f;
    Update(terrain, {16.0f, 0.0f, 16.0f}, 12);
    EXPECT_GT(CountTriangles(terrain), 4 * coarse);
    const Mesh mesh = ReadMesh(terrain);
    for (const auto& triangle : mesh.triangles) {
        for (const Mesh::Vertex& v : triangle) {
            if (v.x % 32 != 0 || v.z % 32 != 0) {
                EXPECT_EQ(v.y, grid.At(std::min(v.x, 31), std::min(v.z, 31)).value);
            }
        }
    }
    EXPECT_EQ(FindBrokenRule(terrain), "");
}

TEST(Update, InTheRealTimeModeANewNodeReadsItsTrueHeights)
{
    // Pinned nowhere at first: the whole tree is made on demand.
    TestGrid grid(16, 16, [](int, int) { return 0.0f; });
    TerrainLod terrain;
    terrain.InitQuadTree(grid.Source());
    Update(terrain, {1e6f, 1e6f, 1e6f}, 8);
    const std::int32_t shed = terrain.Root->CountNodes();
    EXPECT_LT(shed, 85);
    terrain.SetRenderMode(1);
    grid.Fill([](int, int) { return 0.75f; });
    terrain.ScaledLodFactor = 1000.0f;
    Update(terrain, {8.0f, 0.7f, 8.0f}, 6);
    EXPECT_GT(terrain.Root->CountNodes(), shed);
    EXPECT_EQ(terrain.Root->Children[3]->Samples[0].Height, 0.75f);
    EXPECT_EQ(FindBrokenRule(terrain), "");
}

}  // namespace
