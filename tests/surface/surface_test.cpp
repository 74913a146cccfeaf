#include "support/allocation_failure.h"
#include "surface/surface_fixture.h"

#include <cstring>
#include <filesystem>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SurfaceTest, SetKvoAsksTheHostForItsServicesInOrder)
{
    surface->InitServer();
    EXPECT_EQ(surface->SetKVO(host.Get()), S_OK);
    EXPECT_THAT(log, ElementsAre("GetTextureMgr()", "GetImplementation()", "NewElementKey()", "NewElementKey()",
                                 "NewElementKey()"));
    EXPECT_EQ(host->References(), 2u);
    EXPECT_EQ(textures->References(), 2u);
    surface->StopServer();
    EXPECT_EQ(host->References(), 1u);
    EXPECT_EQ(textures->References(), 1u);
}

TEST_F(SurfaceTest, BeforeInitServerTheTerrainGetsNoTextureService)
{
    surface->SetKVO(host.Get());
    EXPECT_THAT(log, ElementsAre("GetTextureMgr()", "NewElementKey()", "NewElementKey()", "NewElementKey()"));
}

TEST_F(SurfaceTest, ASecondHostTakesTheFirstOnesPlaceButNotItsTextureService)
{
    Wire();
    auto second = MakeObject<FakeHost>(log);
    auto otherTextures = MakeObject<FakeTextureMgr>(log);
    second->textures = otherTextures.Get();
    surface->SetKVO(second.Get());
    EXPECT_THAT(log, ElementsAre("GetImplementation()"));  // and the keys stay
    EXPECT_EQ(host->References(), 1u);
    EXPECT_EQ(second->References(), 2u);
    EXPECT_EQ(textures->References(), 2u);
    EXPECT_EQ(otherTextures->References(), 1u);
}

TEST_F(SurfaceTest, TheFirstMatrixStays)
{
    IUnknown* found = host.Get();
    EXPECT_EQ(surface->GetMatrix(&found), S_OK);
    EXPECT_EQ(found, nullptr);
    auto second = MakeObject<FakeMatrix>(log);
    EXPECT_EQ(surface->SetMatrix(matrix.Get()), S_OK);
    EXPECT_EQ(surface->SetMatrix(second.Get()), S_OK);
    surface->GetMatrix(&found);
    EXPECT_EQ(found, matrix.Get());
    EXPECT_EQ(matrix->References(), 2u);  // GetMatrix took none
    EXPECT_EQ(second->References(), 1u);
    surface->StopServer();
    EXPECT_EQ(matrix->References(), 1u);
}

TEST_F(SurfaceTest, WithoutStopServerEverythingStaysHeld)
{
    surface->SetKVO(host.Get());  // no terrain here: it would stay behind too
    surface->SetMatrix(matrix.Get());
    surface = nullptr;
    EXPECT_EQ(host->References(), 2u);
    EXPECT_EQ(matrix->References(), 2u);
    EXPECT_EQ(textures->References(), 2u);
    host->Release();
    matrix->Release();
    textures->Release();
}

TEST_F(SurfaceTest, CallsAfterStopServerFailInsteadOfUsingWhatIsGone)
{
    Wire();
    surface->StopServer();
    EXPECT_EQ(surface->StopServer(), S_OK);
    EXPECT_EQ(surface->InitQuadTree(), E_FAIL);
    EXPECT_EQ(surface->Draw3D(camera.Get()), E_FAIL);
    EXPECT_EQ(surface->Draw2D(0, 0, 0, 0), E_FAIL);
    EXPECT_EQ(surface->SetLOD(1.0f), E_FAIL);
    EXPECT_EQ(surface->CreateTextureSurface2D(), E_FAIL);
}

TEST_F(SurfaceTest, WithoutATerrainMethodsFail)
{
    float f = 0;
    float t[3];
    LONG b = 0;
    EXPECT_EQ(surface->GetLOD(&f), E_FAIL);
    EXPECT_EQ(surface->GetTranslation(t), E_FAIL);
    EXPECT_EQ(surface->UseTextureSource(1), E_FAIL);
    EXPECT_EQ(surface->IsUsingTextureDetail(&b), E_FAIL);
    EXPECT_EQ(surface->Build3D(), E_FAIL);
    EXPECT_EQ(surface->SetRenderMode(TESSARA_RENDER_MODE_NORMAL), E_FAIL);
    EXPECT_EQ(surface->GetRenderedPolygons(nullptr, camera.Get()), E_FAIL);
}

TEST_F(SurfaceTest, WhatIsNotOfferedFailsInEveryState)
{
    for (int state = 0; state < 3; ++state) {
        EXPECT_EQ(surface->BuildTextureSrc(), E_FAIL);
        EXPECT_EQ(surface->BlendTextureDBToSource(nullptr, nullptr, nullptr), E_FAIL);
        EXPECT_EQ(surface->BlendTextureDBToSourceRegion(nullptr, nullptr, VARIANT{}), E_FAIL);
        state == 0 ? Wire() : static_cast<void>(surface->StopServer());
    }
}

TEST_F(SurfaceTest, InitMatrixFillsTheMatrixRowByRow)
{
    Wire();
    surface->SetSize(2, 2);
    EXPECT_EQ(surface->InitMatrix(), S_OK);
    EXPECT_THAT(log, ElementsAre("BeginUpdate(0)", "SetHeight(2)", "SetWidth(2)", "AllocateCells()", "GetCell(0, 0)",
                                 "GetCell(1, 0)", "GetCell(0, 1)", "GetCell(1, 1)", "EndUpdate(0)"));
    for (const ElevationElement& element : matrix->elements) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &element.value, 4);
        EXPECT_EQ(bits, 0x3D4CCCCDu);
    }
}

TEST_F(SurfaceTest, InitMatrixWithoutASizeTouchesNothing)
{
    EXPECT_EQ(surface->InitMatrix(), E_FAIL);
    Wire();
    for (const auto& [width, height] : {std::pair{0, 100}, {100, 0}}) {
        surface->SetSize(width, height);
        EXPECT_EQ(surface->InitMatrix(), E_FAIL);
    }
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SurfaceTest, InitQuadTreeReadsTheMatrixInOrder)
{
    surface->InitServer();
    EXPECT_EQ(surface->InitQuadTree(), E_FAIL);
    surface->SetMatrix(matrix.Get());
    EXPECT_EQ(surface->InitQuadTree(), E_FAIL);  // no host
    surface->SetKVO(host.Get());
    log.clear();
    EXPECT_EQ(surface->InitQuadTree(), S_OK);
    EXPECT_THAT(log, ElementsAre("GetWidth()", "GetHeight()", "GetGrid()", "GetPalette()"));
}

TEST_F(SurfaceTest, InitQuadTreeOnAnEmptyMatrixGivesATerrainThatDrawsNothing)
{
    matrix->Resize(0, 0);
    Wire();
    EXPECT_EQ(surface->InitQuadTree(), S_OK);
    EXPECT_EQ(surface->Draw3D(camera.Get()), S_OK);
    EXPECT_EQ(RecordingGl::Get().Count("glDrawElements"), 0u);
}

TEST_F(SurfaceTest, DrawRestoresThePolygonModesOfBothFaces)
{
    Wire();
    surface->InitQuadTree();
    log.clear();
    surface->SetGLPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
    RecordingGl::Get().polygonMode[0] = GL_LINE;
    RecordingGl::Get().polygonMode[1] = GL_FILL;
    EXPECT_EQ(surface->Draw3D(camera.Get()), S_OK);
    EXPECT_THAT(log, ElementsAre("GetFrustum()", "GetPosition()"));
    const auto calls = RecordingGl::Get().Calls();
    ASSERT_GT(calls.size(), 10u);
    EXPECT_THAT(calls.front(), testing::StartsWith("glGetIntegerv(GL_POLYGON_MODE"));
    EXPECT_EQ(calls[calls.size() - 2], "glPolygonMode(GL_FRONT, GL_LINE)");
    EXPECT_EQ(calls.back(), "glPolygonMode(GL_BACK, GL_FILL)");
    EXPECT_THAT(calls, testing::Contains("glPolygonMode(GL_FRONT_AND_BACK, GL_POINT)"));
    EXPECT_EQ(camera->References(), 1u);
}

TEST_F(SurfaceTest, DrawBeforeABuildReadsTheCameraAndDrawsNothing)
{
    Wire();
    EXPECT_EQ(surface->Draw3D(camera.Get()), S_OK);
    EXPECT_THAT(log, ElementsAre("GetFrustum()", "GetPosition()"));
    EXPECT_THAT(RecordingGl::Get().Calls({"glGetIntegerv"}),
                ElementsAre("glPolygonMode(GL_FRONT, GL_FILL)", "glPolygonMode(GL_BACK, GL_FILL)"));
    EXPECT_EQ(surface->Draw3D(nullptr), S_OK);
}

TEST_F(SurfaceTest, SettingsReachTheTerrain)
{
    Wire();
    float lod = 0;
    surface->GetLOD(&lod);
    EXPECT_EQ(lod, 150.0f);
    surface->SetLOD(3.0f);
    surface->GetLOD(&lod);
    EXPECT_EQ(lod, 3.0f);
    float t[4] = {0, 0, 0, 42.0f};
    surface->SetTranslation3D(1, 2, 3);
    surface->GetTranslation(t);
    EXPECT_THAT(t, ElementsAre(1.0f, 2.0f, 3.0f, 42.0f));
    EXPECT_EQ(surface->SetRenderMode(TESSARA_RENDER_MODE_REALTIME), S_OK);
    for (const int mode : {0, 3})
        EXPECT_EQ(surface->SetRenderMode(static_cast<TESSARA_RENDER_MODE>(mode)), E_FAIL);
    EXPECT_EQ(surface->GetLOD(nullptr), E_POINTER);

    surface->InitQuadTree();
    surface->UseColor(0);
    surface->Draw3D(camera.Get());
    EXPECT_EQ(RecordingGl::Get().Count("glColorPointer"), 0u);
    surface->UseColor(2);
    surface->SetElevationScale(7.0f);
    surface->Draw3D(camera.Get());
    EXPECT_EQ(RecordingGl::Get().Count("glColorPointer"), 1u);
    EXPECT_THAT(RecordingGl::Get().log, testing::Contains("glScalef(1, 7, 1)"));
}

TEST_F(SurfaceTest, NewCellsUnderALiveTreeAreNotReadThroughIt)
{
    Wire();
    surface->InitQuadTree();
    surface->SetRenderMode(TESSARA_RENDER_MODE_REALTIME);
    surface->SetSize(200, 200);
    EXPECT_EQ(surface->InitMatrix(), S_OK);
    EXPECT_EQ(surface->Build3D(), S_OK);
    EXPECT_EQ(surface->Draw3D(camera.Get()), S_OK);
    EXPECT_TRUE(RecordingGl::Get().drawn.empty());
    EXPECT_EQ(surface->InitQuadTree(), S_OK);
    surface->Draw3D(camera.Get());
    EXPECT_FALSE(RecordingGl::Get().drawn.empty());
}

TEST_F(SurfaceTest, RenderedPolygonsGoToAFileWithAnyName)
{
    Wire();
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / u8"Höhen – tri.txt";
    const BstrHolder name(path.string());
    EXPECT_EQ(surface->GetRenderedPolygons(name.Get(), camera.Get()), S_OK);
    EXPECT_FALSE(std::filesystem::exists(path));  // no tree, no file
    surface->InitQuadTree();
    log.clear();
    EXPECT_EQ(surface->GetRenderedPolygons(name.Get(), camera.Get()), S_OK);
    EXPECT_THAT(log, ElementsAre("GetFrustum()", "GetPosition()"));
    EXPECT_GT(std::filesystem::file_size(path), 100u);
    std::filesystem::remove(path);
}

// Wherever memory runs out, results are those of the method and nothing crosses the interface.
TEST_F(SurfaceTest, ShortMemoryGivesTheMethodsOwnResults)
{
    int failedBuilds = 0;
    for (std::size_t n = 1; n < 40; ++n) {
        surface = MakeObject<CoTessara>();
        log.reserve(1000);
        surface->InitServer();
        surface->SetKVO(host.Get());
        surface->SetMatrix(matrix.Get());
        matrix->Resize(60, 60);
        HRESULT built = E_FAIL;
        {
            const MemoryShortage shortage(n);
            built = surface->InitQuadTree();
            EXPECT_TRUE(built == S_OK || built == E_FAIL);
            failedBuilds += built == E_FAIL;
        }
        {
            const MemoryShortage shortage(1);
            EXPECT_EQ(surface->Build3D(), S_OK);
        }
        RecordingGl::Reset();
        EXPECT_EQ(surface->Draw3D(camera.Get()), S_OK);
        // In the memory of the tree before, the rebuild goes well; without one there is no tree.
        EXPECT_EQ(RecordingGl::Get().Count("glDrawElements") > 0, built == S_OK);
        surface->StopServer();
        log.clear();
    }
    EXPECT_GT(failedBuilds, 3);

    surface = MakeObject<CoTessara>();
    {
        const MemoryShortage shortage(1);
        EXPECT_EQ(surface->InitServer(), S_OK);
    }
    EXPECT_EQ(surface->SetLOD(1.0f), E_FAIL);
}

}  // namespace

}  // namespace tessara::test
