// What a frame looks like on the real OpenGL: a flat terrain from above, north at the top, one pixel a cell.

#include "platform/gl/gl_functions.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"
#include "support/test_grid.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"
#include "textures/ctexture_mgr_imp.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

constexpr int kSide = 64;

class TerrainPixels : public testing::Test {
protected:
    void SetUp() override
    {
        try {
            context = std::make_unique<tessara::OffscreenContext>();
        } catch (const std::exception& error) {
            GTEST_SKIP() << error.what();
        }
        ASSERT_TRUE(gl.Load(tessara::OffscreenContext::Lookup()));
        target = std::make_unique<tessara::RenderTarget>(gl, kSide, kSide, false);
        target->Bind();
        // Plan to screen: x to the right, z down, height into the depth.
        const float fromAbove[16] = {1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1};
        glMatrixMode(GL_PROJECTION);
        glOrtho(0.0, kSide, kSide, 0.0, -1000.0, 1000.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadMatrixf(fromAbove);
        for (FrustumPlane& plane : frustum.WorldPlanes)
            plane = {0.0f, 1.0f, 0.0f, -1e9f};
        grid.palette.ResetRamp();  // entry 127 is the grey 127
        terrain.InitQuadTree(grid.Source());
        ASSERT_TRUE(textures.InitMultitexture());
        std::int32_t nearest[2] = {GL_NEAREST, GL_NEAREST};
        textures.SwapTextureFilters(&nearest[0], &nearest[1]);
        terrain.SetTextureMgr(&textures);
        terrain.SetTextureIds(ids);
    }

    void TearDown() override
    {
        for (const std::uint32_t id : ids)
            textures.ReleaseTexture(id);
        target.reset();
    }

    void Texture(std::size_t slot, std::int32_t side, const std::vector<unsigned char>& blueGreenRed)
    {
        const char* name = slot == 0 ? "source" : "detail";
        ASSERT_TRUE(textures.CreateTexture("test", name, side, side, 24, blueGreenRed.data(), &ids[slot]));
        glDisable(GL_TEXTURE_2D);
    }

    std::vector<std::uint8_t> Draw()
    {
        glClear(GL_COLOR_BUFFER_BIT);
        terrain.Draw(1e6f, 1e6f, 1e6f, &frustum);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return target->ReadPixels();
    }

    /// A channel (0 red, 1 green, 2 blue) of the pixel at column x and row y.
    static int At(const std::vector<std::uint8_t>& picture, int x, int y, int channel)
    {
        return picture[static_cast<std::size_t>((y * kSide + x) * 3 + channel)];
    }

    std::unique_ptr<tessara::OffscreenContext> context;
    tessara::GlFunctions gl;
    std::unique_ptr<tessara::RenderTarget> target;
    TestGrid grid{kSide, kSide, [](int, int) { return 0.5f; }};
    CTextureMgrImp textures;
    std::uint32_t ids[3] = {0, 0, 0};
    TerrainFrustum frustum;
    TerrainLod terrain;
};

TEST_F(TerrainPixels, ShowsThePaletteAndOnlyEdgesInLineMode)
{
    const auto filled = Draw();
    for (const int place : {5, 20, 40, 60})
        EXPECT_EQ(At(filled, place, place, 0), 127);
    terrain.SetGLPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    const auto lines = Draw();
    int dark = 0;
    for (int i = 4; i < 60; ++i)
        dark += At(lines, i, 21, 0) == 0 ? 1 : 0;
    EXPECT_GT(dark, 20);
}

TEST_F(TerrainPixels, TheSourceIsStretchedOnceWithItsFirstRowInTheNorthAndMultiplies)
{
    // Blue, green, red of four texels: white, red / green, blue.
    Texture(0, 2, {255, 255, 255, 0, 0, 255, 0, 255, 0, 255, 0, 0});
    terrain.UseTextureSource(true);
    const auto picture = Draw();
    const int expected[2][2][3] = {{{127, 127, 127}, {127, 0, 0}}, {{0, 127, 0}, {0, 0, 127}}};
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column) {
            for (int channel = 0; channel < 3; ++channel)
                EXPECT_NEAR(At(picture, 16 + 32 * column, 16 + 32 * row, channel), expected[row][column][channel], 1);
        }
    }
}

TEST_F(TerrainPixels, TheDetailAddsItsDepartureFromGreyTimesTheBrightness)
{
    terrain.UseTextureDetail(true);
    Texture(1, 1, {100, 128, 180});
    for (const int brightness : {1, 2}) {
        terrain.SetTextureDetailRGBGamma(brightness);
        const auto picture = Draw();
        const int texel[3] = {180, 128, 100};
        for (int channel = 0; channel < 3; ++channel) {
            const double sum = (127.0 / 255.0 + texel[channel] / 255.0 - 0.5) * brightness;
            EXPECT_NEAR(At(picture, 30, 30, channel), std::min(1.0, sum) * 255.0, 2.0) << brightness;
        }
    }
}

TEST_F(TerrainPixels, TheDetailRepeatsAsOftenAsItsTiling)
{
    Texture(1, 2, {0, 0, 0, 255, 255, 255, 0, 0, 0, 255, 255, 255});  // dark in the west, light in the east
    terrain.UseTextureDetail(true);
    terrain.SetTextureDetailRGBGamma(1);
    const float tiling = 4.0f;
    terrain.SetTextureDetailTiling(&tiling, &tiling);
    const auto picture = Draw();
    int changes = 0;
    for (int x = 1; x < kSide - 1; ++x)
        changes += (At(picture, x, 30, 0) > 127) != (At(picture, x - 1, 30, 0) > 127) ? 1 : 0;
    EXPECT_EQ(changes, 7);  // eight bands: four times dark and light
}

}  // namespace
