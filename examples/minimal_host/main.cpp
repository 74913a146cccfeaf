// The smallest host that draws: a height field of its own, the library's host object and camera, one terrain, one
// frame off-screen.

#include "system.h"
#include <tessara/host/basic_host.h>
#include <tessara/host/camera.h>
#include <tessara/host/detail_camera.h>
#include <tessara/host/height_pyramid.h>
#include <tessara/platform/com/bstr.h>
#include <tessara/platform/com/com_object.h>
#include <tessara/platform/com/module_class.h>
#include <tessara/platform/gl/gl.h>
#include <tessara/services/elevation_matrix.h>
#include <tessara/surface/itessara.h>
#include <tessara/textures/elevation_element.h>
#include <tessara/textures/elevation_palette.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int kSide = 257;        // grid points a side
constexpr int kPicture = 256;     // pixels a side
constexpr float kRelief = 40.0f;  // drawn height of the highest point, in grid cells

/// A height field that is there from the start: the component reads it and asks for no change.
class Hills final : public ComObject<IElevationMatrix> {
public:
    Hills() : grid_(kSide * kSide)
    {
        for (int i = 0; i < kSide * kSide; ++i) {
            const int column = i % kSide, row = i / kSide;
            const float x = 0.05f * static_cast<float>(column), z = 0.05f * static_cast<float>(row);
            grid_[static_cast<std::size_t>(i)].value = 0.5f + 0.25f * std::sin(x) + 0.25f * std::cos(z + 0.5f * x);
        }
    }
    HRESULT GetWidth(LONG* width) override { return *width = kSide, S_OK; }
    HRESULT GetHeight(LONG* height) override { return *height = kSide, S_OK; }
    HRESULT GetPalette(ElevationPalette** palette) override { return *palette = &palette_, S_OK; }
    HRESULT GetGrid(ElevationElement** grid) override { return *grid = grid_.data(), S_OK; }
    HRESULT SetWidth(LONG) override { return E_NOTIMPL; }
    HRESULT SetHeight(LONG) override { return E_NOTIMPL; }
    HRESULT AllocateCells() override { return E_NOTIMPL; }
    HRESULT GetCell(LONG, LONG, IElevationCell** cell) override { return *cell = nullptr, E_NOTIMPL; }
    HRESULT SetElevationRange(float, float) override { return E_NOTIMPL; }
    HRESULT SetPalette(ElevationPalette*) override { return E_NOTIMPL; }
    HRESULT ResetMatrix() override { return E_NOTIMPL; }
    HRESULT BeginUpdate(LONG) override { return S_OK; }
    HRESULT EndUpdate(LONG) override { return S_OK; }

private:
    std::vector<ElevationElement> grid_;
    ElevationPalette palette_;
};

/// Counts the pixels that the terrain covered.
int CountDrawn()
{
    std::vector<unsigned char> pixels(kPicture * kPicture * 4);
    glReadPixels(0, 0, kPicture, kPicture, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    int drawn = 0;
    for (std::size_t i = 0; i < pixels.size(); i += 4)
        drawn += pixels[i] + pixels[i + 1] + pixels[i + 2] != 0;
    return drawn;
}

/// Counts the triangles of the camera's frame: three lines of text each.
int CountTriangles(ITessara& terrain, ICameraObject& camera)
{
    const std::string path = (std::filesystem::temp_directory_path() / "minimal_host_triangles.txt").string();
    terrain.GetRenderedPolygons(tessara::BstrHolder(path).Get(), &camera);
    std::ifstream file(path);
    const auto lines = std::count(std::istreambuf_iterator<char>(file), {}, '\n');
    file.close();
    std::filesystem::remove(path);
    return static_cast<int>(lines / 3);
}

int Fail(const char* what, HRESULT result)
{
    std::fprintf(stderr, "minimal_host: %s failed with 0x%08X\n", what, static_cast<unsigned>(result));
    return 1;
}

}  // namespace

int main(int argc, char** argv)
{
    StartComponents();
    // Registered on this machine, the component is found by its class id alone. Otherwise the host names its file.
    const bool registered = argc == 2 && std::strcmp(argv[1], "--registered") == 0;
    if (!registered)
        tessara::RegisterModuleClass(CLSID_CoTessara, TESSARA_MODULE);
    ComPtr<ITessara> terrain;
    HRESULT result =
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain.OutVoid());
    if (FAILED(result))
        return Fail(registered ? "making a registered CoTessara" : "making a CoTessara from " TESSARA_MODULE, result);

    const ComPtr<Hills> hills = MakeObject<Hills>();
    // The camera stands south-west of the terrain and above it. True space and draw space are the same here.
    const ComPtr<tessara::Camera> camera = MakeObject<tessara::Camera>();
    camera->SetViewport(kPicture, kPicture);
    camera->SetLens(60.0, 1.0, 4.0 * kSide);
    camera->SetPosition({-20.0, 100.0, kSide + 20.0});
    camera->LookAt({kSide / 2.0, 0.0, kSide / 2.0});
    terrain->InitServer();
    terrain->SetKVO(MakeObject<tessara::BasicHost>(nullptr, nullptr).Get());  // no textures, no progress display
    terrain->SetMatrix(hills.Get());
    terrain->SetElevationScale(kRelief);
    // Heights are drawn where they are, to the pixel.
    ElevationElement* grid = nullptr;
    hills->GetGrid(&grid);
    const tessara::HeightPyramid heights(grid, kSide, kSide);
    const ComPtr<tessara::DetailCamera> detail = MakeObject<tessara::DetailCamera>();
    detail->Follow(*camera.Get(), {.heights = heights, .elevationScale = kRelief});
    terrain->SetLOD(static_cast<float>(detail->Factor() * kPicture / (2.0 * camera->HalfWidth())));
    result = terrain->InitQuadTree();
    if (FAILED(result))
        return Fail("building the terrain", result);

    const bool context = OpenContext(kPicture);
    int drawn = 0;
    if (context) {
        glEnable(GL_DEPTH_TEST);
        camera->LoadMatrices();
        for (int frame = 0; frame < 4; ++frame) {  // the first frames settle the level of detail
            glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
            terrain->Draw3D(detail.Get());
        }
        drawn = CountDrawn();
        std::printf("%d of %d pixels show the terrain\n", drawn, kPicture * kPicture);
    } else {
        std::printf("no off-screen OpenGL on this machine: triangles only\n");
    }
    const int triangles = CountTriangles(*terrain.Get(), *detail.Get());
    std::printf("%d triangles\n", triangles);
    terrain->StopServer();
    terrain = nullptr;
    CoFreeUnusedLibraries();  // nothing of the module is in use any more: it goes
    return triangles > 0 && (!context || drawn > 0) ? 0 : 1;
}
