// The draw pass, the emission and the dump against the OpenGL that writes down its calls.

#include "support/recording_gl.h"
#include "support/test_grid.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"
#include "textures/ctexture_mgr_imp.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using tessara::test::RecordingGl;
using testing::ElementsAre;
using testing::ElementsAreArray;

using Lines = std::vector<std::string>;

class DrawTest : public testing::Test {
protected:
    DrawTest() : grid(4, 4, [](int, int) { return 0.5f; })
    {
        RecordingGl::Reset();
        for (FrustumPlane& plane : everything.WorldPlanes)
            plane = {0.0f, 1.0f, 0.0f, -1e9f};
        for (FrustumPlane& plane : nothing.WorldPlanes)
            plane = {0.0f, 1.0f, 0.0f, 1e9f};
    }

    /// A tree that a far viewer has reduced to its root.
    void BuildRootOnly()
    {
        terrain.InitQuadTree(grid.Source());
        terrain.Update({1e6f, 1e6f, 1e6f});
    }

    void UseTextures(bool multitexture)
    {
        for (std::uint32_t id : {11u, 22u}) {
            records[id == 22u].id = id;
            textures.records.push_back(&records[id == 22u]);
        }
        textures.multitextureSupported = multitexture;
        if (multitexture) {
            textures.activeTexture = glActiveTextureARB;
            textures.clientActiveTexture = glClientActiveTextureARB;
        }
        terrain.SetTextureMgr(&textures);
        terrain.SetTextureIds(ids);
    }

    void NameArrays()
    {
        RecordingGl& gl = RecordingGl::Get();
        gl.NamePointer(terrain.VertexArray, "vertices");
        gl.NamePointer(terrain.NormalArray, "normals");
        gl.NamePointer(terrain.ColorArray, "colors");
        gl.NamePointer(terrain.TexCoordArray, "texcoords");
        gl.NamePointer(terrain.IndexArray, "indices");
    }

    /// The calls of one frame of a terrain that is its root alone.
    Lines DrawFrame()
    {
        BuildRootOnly();
        RecordingGl::Reset();
        NameArrays();
        terrain.Draw(1e6f, 1e6f, 1e6f, &everything);
        return RecordingGl::Get().Calls();
    }

    TestGrid grid;
    TerrainLod terrain;
    TerrainFrustum everything;
    TerrainFrustum nothing;
    CTextureMgrImp textures;
    TextureRecord records[2] = {};
    std::uint32_t ids[3] = {11, 22, 0};
};

const Lines kArrays = {"glPushMatrix()", "glEnableClientState(GL_VERTEX_ARRAY)",
                       "glVertexPointer(3, GL_FLOAT, 0, vertices)", "glEnableClientState(GL_NORMAL_ARRAY)",
                       "glNormalPointer(GL_FLOAT, 0, normals)"};
const Lines kColors = {"glEnableClientState(GL_COLOR_ARRAY)", "glColorPointer(4, GL_UNSIGNED_BYTE, 0, colors)"};
const Lines kTransform = {"glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                          "glTranslatef(1, 2, 3)", "glScalef(1, 60, 1)", "glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)"};
const Lines kTriangles = {"glDrawElements(GL_TRIANGLES, 18, GL_UNSIGNED_BYTE, indices)", "glDisable(GL_BLEND)"};
const Lines kOneUnitOff = {"glDisable(GL_TEXTURE_2D)", "glDisableClientState(GL_TEXTURE_COORD_ARRAY)"};
const Lines kTwoUnitsOff = {"glActiveTextureARB(GL_TEXTURE1_ARB)",
                            "glClientActiveTextureARB(GL_TEXTURE1_ARB)",
                            "glDisable(GL_TEXTURE_2D)",
                            "glDisableClientState(GL_TEXTURE_COORD_ARRAY)",
                            "glActiveTextureARB(GL_TEXTURE0_ARB)",
                            "glClientActiveTextureARB(GL_TEXTURE0_ARB)",
                            "glDisable(GL_TEXTURE_2D)",
                            "glDisableClientState(GL_TEXTURE_COORD_ARRAY)"};
const Lines kColorsOff = {"glDisableClientState(GL_COLOR_ARRAY)"};
const Lines kDown = {"glDisableClientState(GL_NORMAL_ARRAY)", "glDisableClientState(GL_VERTEX_ARRAY)", "glPopMatrix()"};
const Lines kTexCoords = {"glEnableClientState(GL_TEXTURE_COORD_ARRAY)",
                          "glTexCoordPointer(2, GL_FLOAT, 0, texcoords)"};

Lines Join(std::initializer_list<Lines> parts)
{
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST_F(DrawTest, WithoutATreeCallsNothing)
{
    terrain.Draw(0, 0, 0, &everything);
    EXPECT_TRUE(RecordingGl::Get().log.empty());
    EXPECT_FALSE(terrain.DumpPolygons("unused", 0, 0, 0, &everything));
    EXPECT_TRUE(RecordingGl::Get().log.empty());
}

TEST_F(DrawTest, FramesInTheirOrderOfCalls)
{
    terrain.SetTranslation3D(1, 2, 3);
    EXPECT_THAT(DrawFrame(),
                ElementsAreArray(Join({kArrays, kColors, kTransform, kTriangles, kOneUnitOff, kColorsOff, kDown})));

    terrain.UseColor(false);
    terrain.SetGLPolygonMode(GL_FRONT, GL_LINE);
    Lines transform = kTransform;
    transform.back() = "glPolygonMode(GL_FRONT, GL_LINE)";
    EXPECT_THAT(DrawFrame(), ElementsAreArray(Join(
                                 {kArrays, {"glColor4f(1, 1, 1, 1)"}, transform, kTriangles, kOneUnitOff, kDown})));
}

TEST_F(DrawTest, TexturedFramesInTheirOrderOfCalls)
{
    terrain.SetTranslation3D(1, 2, 3);
    terrain.UseTextureSource(true);
    terrain.UseTextureDetail(true);
    terrain.SetTextureDetailRGBGamma(1);
    const float tilingX = 8.0f;
    terrain.SetTextureDetailTiling(&tilingX, nullptr);
    UseTextures(true);
    // Enabled by the pass, and once more by the service that binds.
    const Lines source = {"glEnable(GL_TEXTURE_2D)", "glEnable(GL_TEXTURE_2D)", "glBindTexture(GL_TEXTURE_2D, 11)",
                          "glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)"};
    const Lines unit0 = {"glClientActiveTextureARB(GL_TEXTURE0_ARB)"};
    const Lines unit1 = {"glClientActiveTextureARB(GL_TEXTURE1_ARB)"};
    const Lines select = {"glActiveTextureARB(GL_TEXTURE0_ARB)"};
    const Lines on = {"glEnable(GL_TEXTURE_2D)"};
    const Lines detail = {"glActiveTextureARB(GL_TEXTURE1_ARB)",
                          "glEnable(GL_TEXTURE_2D)",
                          "glBindTexture(GL_TEXTURE_2D, 22)",
                          "glEnable(GL_TEXTURE_2D)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_COMBINE_ARB)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_COMBINE_RGB_ARB, GL_ADD_SIGNED_ARB)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_RGB_SCALE_ARB, 1)",
                          "glMatrixMode(GL_TEXTURE)",
                          "glLoadIdentity()",
                          "glScalef(8, 16, 1)",
                          "glMatrixMode(GL_MODELVIEW)"};
    EXPECT_THAT(DrawFrame(),
                ElementsAreArray(Join({kArrays, kColors, unit0, kTexCoords, unit1, kTexCoords, kTransform, select,
                                       source, detail, kTriangles, kTwoUnitsOff, kColorsOff, kDown})));

    textures.multitextureSupported = false;  // leaves the detail texture out
    EXPECT_THAT(DrawFrame(), ElementsAreArray(Join({kArrays, kColors, on, kTexCoords, kTransform, source, kTriangles,
                                                    kOneUnitOff, kColorsOff, kDown})));
}

TEST_F(DrawTest, AnEmptySlotAnUnknownIdOrAMissingServiceBindsNothing)
{
    terrain.UseTextureSource(true);
    terrain.UseTextureDetail(true);
    DrawFrame();
    EXPECT_EQ(RecordingGl::Get().Count("glDrawElements"), 1u);
    UseTextures(true);
    for (const std::uint32_t id : {0u, 99u}) {
        ids[0] = ids[1] = id;
        DrawFrame();
        EXPECT_EQ(RecordingGl::Get().Count("glBindTexture"), 0u);
        EXPECT_EQ(RecordingGl::Get().Count("glTexEnvf"), id == 0u ? 0u : 1u);
    }
}

TEST_F(DrawTest, WhatTheFrustumDoesNotLetThroughIsNotDrawn)
{
    BuildRootOnly();
    terrain.Draw(0, 0, 0, &nothing);
    EXPECT_EQ(RecordingGl::Get().Count("glDrawElements"), 0u);
    EXPECT_EQ(RecordingGl::Get().log.back(), "glPopMatrix()");
    terrain.Draw(0, 0, 0, nullptr);
    EXPECT_EQ(RecordingGl::Get().Count("glDrawElements"), 0u);
}

/// The lines of a file that a dump has just written.
class DumpTest : public DrawTest {
protected:
    Lines Dump(const TerrainFrustum& frustum)
    {
        EXPECT_TRUE(terrain.DumpPolygons(path.c_str(), 1e6f, 1e6f, 1e6f, &frustum));
        std::ifstream file(path);
        Lines lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }
    ~DumpTest() override { std::filesystem::remove(path); }
    std::string path = testing::TempDir() + "tessara_dump_test.txt";
};

TEST_F(DumpTest, WritesThreeLinesPerTriangleOfTheFrame)
{
    BuildRootOnly();
    const Lines lines = Dump(everything);
    ASSERT_EQ(lines.size(), 18u);
    for (std::size_t i = 0; i < lines.size(); i += 3)
        EXPECT_EQ(lines[i], "2.000000\t0.500000\t2.000000");
    EXPECT_EQ(lines[1], "3.000000\t0.000000\t3.000000");
    EXPECT_EQ(lines[2], "3.000000\t0.000000\t0.000000");
    EXPECT_THAT(RecordingGl::Get().Calls(), ElementsAre("glPushMatrix()", "glPopMatrix()"));
}

TEST_F(DumpTest, WithNothingInViewLeavesAnEmptyFile)
{
    BuildRootOnly();
    EXPECT_TRUE(Dump(nothing).empty());
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(DumpTest, AFileThatCannotBeOpenedIsNoError)
{
    BuildRootOnly();
    path = testing::TempDir() + "no/such/folder/dump.txt";
    EXPECT_TRUE(terrain.DumpPolygons(path.c_str(), 0, 0, 0, &everything));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DumpTest, NumbersAreThoseOfTheCLocaleWhateverTheHostSays)
{
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"})  // where they are installed
        std::setlocale(LC_ALL, name);
    const float heights[] = {0.0f, -0.0f, 0.1f, 1.0f / 3.0f, -2.5f, 1e-7f, 123456.789f, 3.4028235e38f, -1e-45f};
    grid.Fill([&](int x, int y) { return heights[static_cast<std::size_t>(x + 4 * y) % std::size(heights)]; });
    terrain.InitQuadTree(grid.Source());
    terrain.ScaledLodFactor = 1e9f;
    const Lines lines = Dump(everything);
    std::setlocale(LC_ALL, "C");
    ASSERT_FALSE(lines.empty());
    for (const std::string& line : lines) {
        float x = 0;
        float y = 0;
        float z = 0;
        std::istringstream(line) >> x >> y >> z;
        char expected[200];
        std::snprintf(expected, sizeof(expected), "%f\t%f\t%f", static_cast<double>(x),
                      std::strtod(line.c_str() + line.find('\t') + 1, nullptr), static_cast<double>(z));
        EXPECT_EQ(line, expected);
        EXPECT_EQ(line.find(','), std::string::npos);
    }
}

}  // namespace
