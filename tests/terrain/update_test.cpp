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
