#include "app/output/frame_dump.h"

#include "host/camera.h"
#include "host/detail_camera.h"
#include "host/terrain_session.h"

namespace tessara {

namespace {

/// Steps without output between two looks at the number of triangles, and how often to look.
constexpr int kBlindSteps = 6;
constexpr int kMostLooks = 20;

}  // namespace

PolygonText DumpFrame(TerrainSession& terrain, const Camera& camera, int frames, FrameExtent extent)
{
    const auto blind = MakeObject<DetailCamera>();
    terrain.Follow(*blind, camera);
    blind->SeeNothing();
    const auto eye = MakeObject<DetailCamera>();
    terrain.Follow(*eye, camera);
    if (extent == FrameExtent::Whole)
        eye->SeeAll();
    const auto look = [&](int steps) {
        for (int step = 0; step < steps; ++step)
            terrain.ReadPolygons(*blind, [](std::string_view) {});
        PolygonText polygons;
        terrain.ReadPolygons(*eye, [&](std::string_view text) { polygons.Append(text); });
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
