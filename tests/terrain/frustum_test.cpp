#include "support/recording_gl.h"
#include "terrain/terrain_frustum.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using tessara::test::RecordingGl;

/// The cube from -1 to 1, with planes in the frustum's order: near and far along z, then x, then y.
TerrainFrustum Cube()
{
    TerrainFrustum frustum;
    const FrustumPlane planes[6] = {{0, 0, 1, -1}, {0, 0, -1, -1}, {-1, 0, 0, -1},
                                    {1, 0, 0, -1}, {0, -1, 0, -1}, {0, 1, 0, -1}};
    std::copy(planes, planes + 6, frustum.WorldPlanes);
    return frustum;
}

TEST(BoxTest, TellsInsideCrossingAndOutside)
{
    struct Case {
        float low[3];
        float high[3];
        std::int32_t result;
        const char* what;
    };
    const Case cases[] = {
        {{-0.5f, -0.5f, -0.5f}, {0.5f, 0.5f, 0.5f}, 0, "inside"},
        {{-1, -1, -1}, {1, 1, 1}, 0, "touching every plane from inside"},
        {{1, -1, -1}, {2, 1, 1}, 1, "four corners on a plane, four beyond it"},
        {{-0.5f, -0.5f, -3}, {0.5f, 0.5f, 3}, 1, "through the near and the far plane"},
        {{1.5f, -3, -3}, {2, 3, 3}, 2, "beyond one side, partly beyond others"},
        {{0.5f, 2, 0.5f}, {0.6f, 3, 0.6f}, 2, "above"},
        {{0.2f, 0.2f, 0.2f}, {0.2f, 0.2f, 0.2f}, 0, "a point inside"},
        {{0.2f, 0.2f, 4}, {0.2f, 0.2f, 4}, 2, "a point outside"},
        {{-9, -9, -9}, {9, 9, 9}, 1, "around everything"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Cube().BoxTest(c.low, c.high), c.result) << c.what;
}

TEST(BoxTest, LetsThroughABoxThatIsOutsideOfNoSinglePlane)
{
    TerrainFrustum frustum = Cube();
    frustum.WorldPlanes[2] = {-0.70710678f, -0.70710678f, 0, -0.5f};  // cuts the corner towards +x +y
    const float low[3] = {-3.0f, 0.8f, 0.0f};
    const float high[3] = {3.0f, 0.9f, 0.1f};
    EXPECT_EQ(frustum.BoxTest(low, high), 1);
}

TEST(SpherePasses, CountsWhatReachesIntoTheVolume)
{
    const TerrainFrustum frustum = Cube();
    EXPECT_EQ(frustum.SpherePasses(0, 0, 0, 0), 1.0f);
    EXPECT_EQ(frustum.SpherePasses(1.5f, 0, 0, 0.4f), 0.0f);
    EXPECT_EQ(frustum.SpherePasses(1.5f, 0, 0, 0.5f), 1.0f);
    EXPECT_EQ(frustum.SpherePasses(0, 5, 0, 1), 0.0f);
    EXPECT_EQ(frustum.SpherePassesSides(0, 5, 0, 1), 1.0f);  // above and below don't count there
    EXPECT_EQ(frustum.SpherePassesSides(0, 0, 5, 1), 0.0f);
}

TEST(BuildViewPlanes, GivesThePlanesAndTheProjectionOfTheLens)
{
    RecordingGl::Reset();
    TerrainFrustum frustum;
    frustum.FieldOfView = 90.0f;
    frustum.Near = 2.0f;
    frustum.Far = 10.0f;
    frustum.BuildViewPlanes(200, 100);
    const float root = std::sqrt(0.5f);
    const float upright = std::atan(0.5f);
    const FrustumPlane expected[6] = {
        {0, 0, 1, 2},
        {0, 0, -1, -10},
        {-root, 0, root, 0},
        {root, 0, root, 0},
        {0, -std::cos(upright), std::sin(upright), 0},
        {0, std::cos(upright), std::sin(upright), 0},
    };
    for (int i = 0; i < 6; ++i) {
        EXPECT_NEAR(frustum.ViewPlanes[i].a, expected[i].a, 1e-6f) << i;
        EXPECT_NEAR(frustum.ViewPlanes[i].b, expected[i].b, 1e-6f) << i;
        EXPECT_NEAR(frustum.ViewPlanes[i].c, expected[i].c, 1e-6f) << i;
        EXPECT_EQ(frustum.ViewPlanes[i].d, expected[i].d) << i;
    }
    // Half of the angle comes out a little above 45 degrees, since pi is a float.
    const std::string projection =
        "glMultMatrixf({-0.99999994, 0, 0, 0, 0, 1.9999999, 0, 0, 0, 0, 1.5, 1, 0, 0, -5, 0})";
    EXPECT_EQ(RecordingGl::Get().log, std::vector<std::string>{projection});

    // The same projection, taken from the viewport.
    RecordingGl::Reset();
    RecordingGl::Get().viewport[2] = 200;
    RecordingGl::Get().viewport[3] = 100;
    frustum.ApplyProjection();
    EXPECT_EQ(RecordingGl::Get().log.back(), projection);
}

TEST(GetPlane, ReadsTheWorldPlanesWithinBounds)
{
    TerrainFrustum frustum = Cube();
    FrustumPlane plane{7, 7, 7, 7};
    for (const int index : {-1, 6}) {
        EXPECT_FALSE(frustum.GetPlane(&plane, index));
        EXPECT_EQ(plane.a, 7.0f);
    }
    EXPECT_TRUE(frustum.GetPlane(&plane, 3));
    EXPECT_EQ(plane.a, 1.0f);
    FrustumPlane* view = nullptr;
    FrustumPlane* world = nullptr;
    frustum.GetPlaneTables(&view, &world);
    EXPECT_EQ(view, frustum.ViewPlanes);
    EXPECT_EQ(world, frustum.WorldPlanes);
}

}  // namespace
