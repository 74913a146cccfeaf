#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace tessara {
namespace {

class Offscreen : public testing::Test {
protected:
    Offscreen() { EXPECT_TRUE(gl.Load(OffscreenContext::Lookup())); }

    /// A picture of 64 x 32 pixels that is red to the upper left of its diagonal and black elsewhere.
    std::vector<std::uint8_t> DrawHalf(bool antialias)
    {
        const RenderTarget target(gl, 64, 32, antialias);
        target.Bind();
        glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glColor3f(1.0f, 0.0f, 0.0f);
        glBegin(GL_TRIANGLES);
        glVertex2f(-1.0f, -1.0f);
        glVertex2f(1.0f, 1.0f);
        glVertex2f(-1.0f, 1.0f);
        glEnd();
        return target.ReadPixels();
    }

    OffscreenContext context;
    GlFunctions gl;
};

TEST_F(Offscreen, GivesACompatibilityContextThatDraws)
{
    const std::vector<std::uint8_t> pixels = DrawHalf(false);
    ASSERT_EQ(pixels.size(), 64u * 32u * 3u);
    EXPECT_EQ(pixels[0], 255);  // top left
    EXPECT_EQ(pixels[1], 0);
    EXPECT_EQ(pixels[60 * 3], 255);            // top, left of the diagonal's end
    EXPECT_EQ(pixels[(31 * 64 + 63) * 3], 0);  // bottom right
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(Offscreen, EdgesAreSmoothOnlyWhenAskedFor)
{
    const auto shades = [](const std::vector<std::uint8_t>& pixels) {
        std::set<std::uint8_t> found;
        for (std::size_t i = 0; i < pixels.size(); i += 3)
            found.insert(pixels[i]);
        return found;
    };
    EXPECT_EQ(shades(DrawHalf(false)).size(), 2u);
    EXPECT_GT(shades(DrawHalf(true)).size(), 2u);
}

TEST_F(Offscreen, AFrameBeyondTheLimitsIsRefused)
{
    EXPECT_THROW(RenderTarget(gl, 1 << 20, 4, true), std::runtime_error);
    EXPECT_EQ(DrawHalf(true)[0], 255);
}

TEST_F(Offscreen, TwoContextsTakeTurnsAndMove)
{
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    {
        OffscreenContext other;
        EXPECT_EQ(glIsTexture(texture), GL_FALSE);
        const OffscreenContext moved = std::move(other);
        context.MakeCurrent();
    }
    EXPECT_EQ(glIsTexture(texture), GL_TRUE);
}

TEST(GlFunctions, NeedAContext)
{
    GlFunctions gl;
    EXPECT_FALSE(gl.Load(OffscreenContext::Lookup()));
}

}  // namespace
}  // namespace tessara
