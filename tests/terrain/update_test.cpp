#include "support/test_grid.h"
#include "terrain/detail_tests.h"
#include "terrain/mesh.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr Viewer kFarAway{1e6f, 1e6f, 1e6f};

void Update(TerrainLod& terrain, const Viewer& viewer, int frames = 1)
{
    for (int i = 0; i < frames; ++i)
        terrain.Update(viewer);
}

TEST(DetailTests, CompareWithTheLargestAxisDistanceToTheVertexOrTheBox)
{
    const struct {
        Viewer viewer;
        float vertexError;  // the largest that isn't enough for the vertex (128, 0.5, 64)
        float boxError;     // and for the box from (0, 0.25, 32) to (64, 0.75, 96)
    } cases[] = {
        {{-172.0f, 10.5f, 70.0f}, 2.0f, 172.0f / 150.0f},
        {{100.0f, 300.5f, 32.0f}, 2.0f, 299.75f / 150.0f},
        {{100.0f, 10.5f, 364.0f}, 2.0f, 268.0f / 150.0f},
        {{100.0f, 10.5f, -236.0f}, 2.0f, 268.0f / 150.0f},
    };
    Slack slack;
    for (const auto& c : cases) {
        const DetailTests tests(c.viewer, 150.0f);
        const auto vertex = [&](float error) { return tests.Vertex(128, 0.5f, 64, error, slack); };
        const auto box = [&](float error) { return tests.Box(0, 32, 64, 0.25f, 0.75f, error, slack); };
        EXPECT_FALSE(vertex(c.vertexError));  // equal is not above
        EXPECT_TRUE(vertex(c.vertexError * 1.0001f));
        EXPECT_FALSE(box(c.boxError * 0.9999f));
        EXPECT_TRUE(box(c.boxError * 1.0001f));
    }
    const DetailTests inside({10.0f, 0.5f, 40.0f}, 150.0f);
    EXPECT_TRUE(inside.Box(0, 32, 64, 0.25f, 0.75f, 0.0f, slack));  // even without error
    EXPECT_FALSE(inside.Box(0, 32, 64, 0.5f, 0.5f, 0.0f, slack));   // on a box without height
}

// At all sizes of coordinates and heights, up to where floats are as coarse as the ways.
TEST(DetailTests, HaveTheSameAnswersWhereverTheOdometerSaysThatTheSlackHolds)
{
    std::mt19937 random(3);
    const auto uniform = [&](float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    };
    int held = 0;
    for (int round = 0; round < 20000; ++round) {
        const float size = std::ldexp(1.0f, static_cast<int>(random() % 34) - 8);
        const float place[3] = {uniform(0, size), uniform(-size, size), uniform(0, size)};
        const float tall = uniform(0, size);
        const float wide = uniform(0, size);
        Viewer viewer{uniform(-size, size), uniform(-size, size), uniform(-size, size)};
        const float error = uniform(0, 2 * size);
        const auto answer = [&](Slack& slack) {
            const DetailTests tests(viewer, 1.0f);
            const bool box = tests.Box(place[0], place[2], wide, place[1], place[1] + tall, error, slack);
            return std::pair(box, tests.Vertex(place[0], place[1], place[2], error, slack));
        };
        Slack slack;
        Odometer odometer;
        odometer.Advance(viewer, 1.0f);
        const auto first = answer(slack);
        const Odometer::Reading holds = odometer.After(slack.Least());
        for (int step = 0; step < 8; ++step) {
            const float reach = std::max(slack.Least(), 0.0f) * uniform(0.0f, 0.6f);
            (&viewer.x)[random() % 3] += random() % 2 ? reach : -reach;
            odometer.Advance(viewer, 1.0f);
            if (odometer.IsDue(holds))
                break;
            Slack later;
            ASSERT_EQ(answer(later), first) << "round " << round;
            ++held;
        }
    }
    EXPECT_GT(held, 10000);
}

TEST(Odometer, BeginsAnewAfterWhatItCannotCount)
{
    const float nowhere = std::numeric_limits<float>::quiet_NaN();
    const std::pair<Viewer, float> steps[] = {
        {{0, 0, 2e6f}, 5.0f}, {{nowhere, 0, 0}, 5.0f}, {{0, 3e38f, 0}, 5.0f}, {{1, 2, 3}, 6.0f}};
    for (const auto& [viewer, factor] : steps) {
        Odometer odometer;
        odometer.Advance({1, 2, 3}, 5.0f);
        const Odometer::Reading forever = odometer.After(1e30f);
        EXPECT_TRUE(odometer.IsDue(forever));
        odometer.Advance({1, 2, 3.5f}, 5.0f);
        EXPECT_FALSE(odometer.IsDue(forever));
        odometer.Advance(viewer, factor);
        EXPECT_TRUE(odometer.IsDue(forever));
        odometer.Advance(viewer, factor);
        EXPECT_EQ(odometer.IsDue(forever), std::isnan(viewer.x));
    }
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
    EXPECT_EQ(root.QuadrantError[3], 0.25f);
    EXPECT_EQ(CountTriangles(terrain), 16u);

    Update(terrain, {1000.0f, 1000.0f, 1000.0f});
    EXPECT_EQ(root.ActiveMask, 6);
    EXPECT_EQ(root.EdgeUsers[0], 0);
    EXPECT_EQ(root.EdgeUsers[1], 0);
    EXPECT_EQ(CountTriangles(terrain), 6u);
    EXPECT_EQ(root.CountNodes(), 5);  // the leaves are pinned
}

TEST(Update, SettlesAtTheRimsOwnCountWhenTheViewerIsFarAndStaysThere)
{
    const std::pair<int, std::size_t> cases[] = {{16, 46}, {32, 106}, {64, 230}, {128, 482}};
    for (const auto& [side, triangles] : cases) {
        const TestGrid grid(side, side, [](int x, int y) { return 0.05f + 0.9f * HashNoise(x, y, 2); });
        TerrainLod terrain;
        terrain.InitQuadTree(grid.Source());
        Update(terrain, kFarAway, 12);
        EXPECT_EQ(CountTriangles(terrain), triangles) << side;
        const auto settled = ReadTree(terrain);
        Update(terrain, kFarAway, 3);
        EXPECT_EQ(ReadTree(terrain), settled);
    }
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

// From a tree that is pinned nowhere, so that all of it is made on demand.
TEST(Update, FollowsTheGridInTheRealTimeModeAlone)
{
    for (const bool realTime : {false, true}) {
        TestGrid grid(32, 32, [](int, int) { return 0.0f; });
        TerrainLod terrain;
        terrain.InitQuadTree(grid.Source());
        Update(terrain, kFarAway, 8);
        const std::int32_t shed = terrain.Root->CountNodes();
        EXPECT_LT(shed, 200);
        grid.Fill([](int x, int y) { return 0.5f + HashNoise(x, y, 9); });
        terrain.SetRenderMode(realTime ? 1 : 0);
        terrain.ScaledLodFactor = 1000.0f;
        Update(terrain, {16.0f, 0.0f, 16.0f}, 12);
        EXPECT_EQ(terrain.Root->CountNodes() > 2 * shed, realTime);
        for (const auto& triangle : ReadMesh(terrain).triangles) {
            for (const Mesh::Vertex& v : triangle) {
                const bool follows = realTime && (v.x % 32 != 0 || v.z % 32 != 0);
                EXPECT_EQ(v.y, follows ? grid.At(std::min(v.x, 31), std::min(v.z, 31)).value : 0.0f);
            }
        }
    }
}

}  // namespace
