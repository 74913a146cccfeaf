#include "app/output/frame_dump.h"

#include "host/camera.h"
#include "host/terrain_session.h"

namespace tessara {

namespace {

/// Steps without output between two looks at the number of triangles, and how often to look.
constexpr int kBlindSteps = 6;
constexpr int kMostLooks = 20;

/// Stands where another camera stands and sees nothing: a dump for it adapts the terrain and writes no triangle.
class BlindCamera final : public ComObject<ICameraObject> {
public:
    explicit BlindCamera(Camera& camera) : camera_(camera) { frustum_.WorldPlanes[0] = {0.0f, 0.0f, 0.0f, 1.0f}; }

    HRESULT STDMETHODCALLTYPE GetPosition(float* position) override { return camera_.GetPosition(position); }

    HRESULT STDMETHODCALLTYPE GetFrustum(TerrainFrustum** frustum) override
    {
        *frustum = &frustum_;
        return S_OK;
    }

private:
    Camera& camera_;
    TerrainFrustum frustum_;
};

}  // namespace

PolygonText DumpFrame(const TerrainSession& terrain, Camera& camera, int frames)
{
    const auto blind = MakeObject<BlindCamera>(camera);
    const auto look = [&](int steps) {
        for (int step = 0; step < steps; ++step)
            terrain.ReadPolygons(*blind, [](std::string_view) {});
        PolygonText polygons;
        terrain.ReadPolygons(camera, [&](std::string_view text) { polygons.Append(text); });
        return polygons;
    };
    if (frames > 0)
        return look(frames - 1);
    PolygonText polygons = look(kBlindSteps);
    for (int looks = 1; looks < kMostLooks; ++looks) {
        const std::uint64_t before = polygons.Triangles();
        polygons = {};
        polygons = look(kBlindSteps);
        if (polygons.Triangles() == before)
            break;
    }
    return polygons;
}

}  // namespace tessara
