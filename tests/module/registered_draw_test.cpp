// The whole way of a host that knows the class id: register, create, draw, unload, unregister.

#include "host/camera.h"
#include "host/elevation_matrix.h"
#include "host/host_classes.h"
#include "host/kvo_host.h"
#include "platform/com/module_server.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"
#include "support/fake_parser.h"
#include "support/registry_sandbox.h"
#include "surface/itessara.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace {

constexpr char kModule[] = TESSARA_MODULE_PATH;
constexpr int kSide = 33;
constexpr int kPicture = 64;

HRESULT Create(ComPtr<ITessara>& terrain)
{
    return CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain.OutVoid());
}

ComPtr<tessara::ElevationMatrix> Slope()
{
    const auto matrix = MakeObject<tessara::ElevationMatrix>();
    matrix->SetWidth(kSide);
    matrix->SetHeight(kSide);
    EXPECT_EQ(matrix->AllocateCells(), S_OK);
    for (LONG y = 0; y < kSide; ++y) {
        for (LONG x = 0; x < kSide; ++x)
            matrix->ElementAt(x, y)->value = static_cast<float>(x) / kSide;
    }
    return matrix;
}

/// Draws the terrain from above. \return how many pixels aren't black
std::ptrdiff_t CountDrawn(ITessara& terrain, const tessara::GlFunctions& gl)
{
    const auto camera = MakeObject<tessara::Camera>();
    camera->SetViewport(kPicture, kPicture);
    camera->SetLens(60.0, 1.0, 10.0 * kSide);
    camera->SetPosition({kSide / 2.0, 2.0 * kSide, kSide});
    camera->LookAt({kSide / 2.0, 0.0, kSide / 2.0});
    const tessara::RenderTarget target(gl, kPicture, kPicture, false);
    target.Bind();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    camera->LoadMatrices();
    EXPECT_EQ(terrain.Draw3D(camera.Get()), S_OK);
    const auto pixels = target.ReadPixels();
    return std::count_if(pixels.begin(), pixels.end(), [](std::uint8_t value) { return value != 0; }) / 3;
}

TEST(RegisteredComponent, DrawsForAHostThatKnowsItsClassIdAlone)
{
    std::unique_ptr<tessara::OffscreenContext> context;
    try {
        context = std::make_unique<tessara::OffscreenContext>();
    } catch (const std::runtime_error& error) {
        GTEST_SKIP() << error.what();
    }
    tessara::GlFunctions gl;
    ASSERT_TRUE(gl.Load(tessara::OffscreenContext::Lookup()));
    const tessara::test::RegistrySandbox sandbox;
    ASSERT_EQ(tessara::RegisterServer(kModule), S_OK);
    for (int round = 0; round < 2; ++round) {
        ComPtr<ITessara> terrain;
        ASSERT_EQ(Create(terrain), S_OK);
        terrain->InitServer();
        terrain->SetKVO(MakeObject<tessara::KvoHost>(nullptr, nullptr).Get());
        const auto matrix = Slope();
        terrain->SetMatrix(matrix.Get());
        terrain->SetRenderMode(TESSARA_RENDER_MODE_REALTIME);
        ASSERT_EQ(terrain->InitQuadTree(), S_OK);
        EXPECT_GT(CountDrawn(*terrain, gl), kPicture * kPicture / 20);
        // Cells that go under a terrain leave it what it was built on.
        matrix->SetWidth(2);
        ASSERT_EQ(matrix->AllocateCells(), S_OK);
        matrix->ResetMatrix();
        EXPECT_GT(CountDrawn(*terrain, gl), kPicture * kPicture / 20);
        terrain->StopServer();
        terrain = nullptr;
        CoFreeUnusedLibraries();
        EXPECT_EQ(dlopen(kModule, RTLD_NOW | RTLD_NOLOAD), nullptr);
    }
    EXPECT_EQ(tessara::UnregisterServer(kModule), S_OK);
    ComPtr<ITessara> none;
    EXPECT_EQ(Create(none), REGDB_E_CLASSNOTREG);
}

TEST(RegisteredComponent, StaysLoadedWhileAMatrixHoldsThePaletteThatItMade)
{
    const tessara::test::RegistrySandbox sandbox;
    ASSERT_EQ(tessara::RegisterServer(kModule), S_OK);
    const tessara::HostClasses classes = tessara::RegisterHostClasses();
    tessara::test::CallLog log;
    const auto parser = MakeObject<tessara::test::FakeParser>(log);
    for (const char* side : {"MATRIX_WIDTH", "MATRIX_HEIGHT"})
        parser->Put<LONG>(side, 2, {2});
    parser->Put<float>("MATRIX_DATA", 0x10, {0.0f, 0.25f, 0.5f, 1.0f});
    ComPtr<IElevationMatrix> matrix;
    {
        ComPtr<ITessara> terrain;
        ASSERT_EQ(Create(terrain), S_OK);
        terrain->InitServer();
        ASSERT_EQ(terrain->LoadSerializedMatrix(parser.Get()), S_OK);
        IUnknown* loaded = nullptr;
        terrain->GetMatrix(&loaded);
        matrix = ComPtr<IElevationMatrix>(static_cast<IElevationMatrix*>(loaded));
        terrain->StopServer();
    }
    const auto isLoaded = [] {
        CoFreeUnusedLibraries();
        void* const module = dlopen(kModule, RTLD_NOW | RTLD_NOLOAD);
        return module && dlclose(module) == 0;
    };
    EXPECT_TRUE(isLoaded());
    ElevationPalette* palette = nullptr;
    matrix->GetPalette(&palette);
    EXPECT_EQ(palette->GetGreen(0), 136);
    matrix = nullptr;  // the palette's end is the module's code
    EXPECT_FALSE(isLoaded());
}

}  // namespace
