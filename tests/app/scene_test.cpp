#include "app/picture.h"
#include "app/view/framing.h"
#include "app/view/height_span.h"
#include "app/view/light_map.h"
#include "app/view/scene.h"
#include "app/view/sea.h"
#include "host/camera.h"
#include "host/detail_camera.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "host/test_elevation.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tessara {
namespace {

constexpr Vector3 kSunInTheWest{-0.8, 0.6, 0.0};

TEST(LightMap, AWallThrowsItsShadowAwayFromTheSun)
{
    // A wall of 60 m at column 10; the sun's tangent is 0.75, so the shadow is 80 m long.
    const auto data = MakeElevation(30, 21, 10.0, 10.0, [](int x, int) { return x == 10 ? 60 : 0; });
    const LightMap map = MakeLightMap(data, 1.0, kSunInTheWest, 4096);
    const auto sunlight = [&](int x) { return map.texels[static_cast<std::size_t>(10 * 30 + x)].sunlight; };
    EXPECT_EQ(sunlight(5), 65535);
    EXPECT_EQ(sunlight(13), 0);
    EXPECT_EQ(sunlight(16), 0);
    EXPECT_EQ(sunlight(22), 65535);
    EXPECT_LT(map.texels[10 * 30 + 9].skylight, 50000);
    EXPECT_EQ(map.texels[10 * 30 + 10].skylight, 65535);
}

TEST(LightMap, ShadowsReachAsFarAsTheyDoOnALargeGrid)
{
    // A wall of 500 m at column 300; the sun's tangent is 0.1, so the shadow is 500 cells of 10 m long.
    const auto data = MakeElevation(900, 3, 10.0, 10.0, [](int x, int) { return x == 300 ? 500 : 0; });
    const LightMap map = MakeLightMap(data, 1.0, {-0.995037, 0.0995037, 0.0}, 4096);
    for (int x = 302; x < 600; ++x)
        ASSERT_EQ(map.texels[static_cast<std::size_t>(900 + x)].sunlight, 0) << x;
    for (const int x : {10, 250, 298})
        EXPECT_EQ(map.texels[static_cast<std::size_t>(900 + x)].sunlight, 65535) << x;
    EXPECT_NEAR(map.texels[900 + 800].sunlight, 32768, 700);
}

TEST(Sea, IsWaterThatReachesTheEdgeAndNoLowLand)
{
    const auto water = [](auto height, const SeaChoice& choice = {}) {
        const ElevationData data = MakeElevation(32, 32, 10.0, 10.0, height);
        const auto sea = SeaOf(data, choice);
        int covered = 0;
        for (std::size_t cell = 0; cell < data.metres.size(); ++cell)
            covered += sea && sea->Covers(cell, data.metres[cell]) ? 1 : 0;
        return covered;
    };
    const auto coast = [](double level) { return [level](int x, int) { return x < 12 ? level : 40.0 + x; }; };
    const auto hollow = [](int x, int y) { return x > 5 && x < 25 && y > 5 && y < 25 ? 0.0 : 90.0; };
    EXPECT_EQ(water(coast(0.0)), 12 * 32);
    EXPECT_EQ(water(coast(9.55e-7)), 12 * 32) << "0 m that came through other units";
    EXPECT_EQ(water(coast(5.0)), 0);
    EXPECT_EQ(water(coast(-3.0)), 0) << "low land";
    EXPECT_EQ(water(hollow), 0) << "a hole that was filled with 0";
    EXPECT_EQ(water([](int x, int) { return x < 12 ? 0.0 : 1500.0; }), 0) << "the same at the edge";
    EXPECT_EQ(water([](int x, int) { return 20.0 * x - 200.0; }), 11 * 32) << "ground of a sea";
    EXPECT_EQ(water([](int x, int y) { return x < 8                                 ? 0.0
                                              : x > 20 && x < 30 && y > 9 && y < 20 ? -40.0
                                                                                    : 20.0; }),
              8 * 32);
    EXPECT_EQ(water(hollow, {true, {}}), 19 * 19) << "asked for";
    EXPECT_EQ(water(coast(5.0), {true, 60.0}), 21 * 32);
    EXPECT_EQ(water(coast(0.0), {false, {}}), 0);
}

TEST(LightMap, ALargeGridIsAveragedDown)
{
    const auto data = MakeElevation(257, 129, 10.0, 10.0, [](int x, int) { return 5 * x; });
    const LightMap map = MakeLightMap(data, 1.0, kSunInTheWest, 100);
    EXPECT_LE(map.width, 100);
    EXPECT_GT(map.width, 64);
    EXPECT_EQ(map.texels.size(), static_cast<std::size_t>(map.width) * static_cast<std::size_t>(map.height));
    const LightMap::Texel& middle = map.texels[map.texels.size() / 2];
    EXPECT_NEAR(middle.normalX / 65535.0 * 2.0 - 1.0, -0.447, 0.02);
}

/// A pyramid seen from the south and above, 160 x 120 pixels, through the real OpenGL.
class SceneTest : public testing::Test {
protected:
    SceneTest()
        : data(MakeElevation(33, 33, 10.0, 10.0,
                             [](int x, int y) { return 10.0 * (16 - std::max(std::abs(x - 16), std::abs(y - 16))); })),
          terrain(data, Options(), ComPtr<IKvoHost>(MakeObject<KvoHost>(nullptr, nullptr).Get()))
    {
        EXPECT_TRUE(gl.Load(OffscreenContext::Lookup()));
        camera->SetDrawUnits(terrain.Ground().DrawUnits());
        camera->SetViewport(160, 120);
        camera->SetLens(40.0, 1.0, 5000.0);
        camera->SetDirection({0.0, -1.0, -1.0});
        FramePoints(*camera, OutlineOf(data, SpanOf(data), terrain.Ground()).points, 0.05);
    }

    static TerrainOptions Options()
    {
        TerrainOptions options;
        options.border = 2;
        return options;
    }

    Picture Draw(const SceneStyle& style, bool withShaders = true)
    {
        const LightMap light = MakeLightMap(data, 1.0, style.atmosphere.sunDirection, 512);
        Scene scene(gl, data, terrain, light, style, withShaders);
        const RenderTarget target(gl, 160, 120, false);
        target.Bind();
        const auto detail = MakeObject<DetailCamera>();
        terrain.Follow(*detail, *camera);
        triangles = scene.Settle(*camera, *detail);
        scene.Draw(*camera, *detail);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return {160, 120, target.ReadPixels()};
    }

    OffscreenContext context;
    GlFunctions gl;
    ElevationData data;
    TerrainSession terrain;
    ComPtr<Camera> camera = MakeObject<Camera>();
    std::uint32_t triangles = 0;
};

TEST_F(SceneTest, LightsTheSameSidesWithAndWithoutShaders)
{
    for (const bool withShaders : {true, false}) {
        const Picture picture = Draw({.atmosphere = SunlitAtmosphere(270.0, 35.0)}, withShaders);
        const auto green = [&](int x) { return picture.Mean(x - 4, 56, 8, 8).green; };
        EXPECT_GT(green(36), green(124) + 40) << "with shaders: " << withShaders;
        EXPECT_GT(triangles, 20u);
    }
}

TEST_F(SceneTest, LeavesOpenGlAsItFoundIt)
{
    GLint before[2] = {};
    GLint after[2] = {};
    glGetIntegerv(GL_POLYGON_MODE, before);
    Draw({.atmosphere = SunlitAtmosphere(300.0, 40.0), .fill = FillMode::Wireframe});
    glGetIntegerv(GL_POLYGON_MODE, after);
    EXPECT_EQ(before[0], after[0]);
    EXPECT_EQ(before[1], after[1]);
    for (const GLenum capability : {GL_LIGHTING, GL_CLIP_PLANE0, GL_DEPTH_TEST, GL_POLYGON_OFFSET_FILL})
        EXPECT_FALSE(glIsEnabled(capability)) << capability;
}

}  // namespace
}  // namespace tessara
