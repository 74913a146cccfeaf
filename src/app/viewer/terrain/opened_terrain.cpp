#include "app/viewer/terrain/opened_terrain.h"

#include "app/view/atmosphere.h"
#include "app/view/height_span.h"
#include "app/viewer/camera/camera_controller.h"
#include "host/detail_camera.h"
#include "host/kvo_host.h"
#include "platform/com/bstr.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tessara {

namespace {

constexpr double kBuilt = 0.5;    // share of the time after which the tree stands
constexpr double kAdapted = 0.6;  // and after which it suits the view
constexpr int kFirstSteps = 4;

/// A tree is built in full. This takes off what a view of the whole terrain doesn't need: the dump of triangles adapts
/// the tree without OpenGL, and a camera that sees nothing makes it write none.
void AdaptToFirstView(TerrainDocument& document, const Outline& outline, const ViewSettings& settings,
                      const PictureSize& size)
{
    TerrainSession& session = document.Session();
    const auto camera = MakeObject<Camera>();
    CameraController controller(*camera, document.Ground(), session.Ground());
    controller.Resize(size.width, size.height);
    controller.SetOutline(outline);
    controller.ShowAll();
    session.SetLevelOfDetail(camera->Width() / (2.0 * camera->HalfWidth()) / settings.errorPixels);
    const auto detail = MakeObject<DetailCamera>();
    session.Follow(*detail, *camera);
    detail->SeeNothing();
    const BstrHolder nowhere("/dev/null");
    for (int step = 0; step < kFirstSteps; ++step)
        session.Surface().GetRenderedPolygons(nowhere.Get(), detail.Get());
}

}  // namespace

OpenedTerrain PrepareTerrain(std::string path, ElevationData data, const ViewSettings& settings,
                             const PictureSize& size, const ProgressCallback& progress)
{
    const auto report = [&progress](double fraction) {
        if (progress)
            progress(fraction);
    };
    report(0.0);
    OpenedTerrain terrain;
    terrain.document = std::make_unique<TerrainDocument>(std::move(path), std::move(data), settings.exaggeration);
    report(kBuilt);
    const ElevationData& heights = terrain.document->Data();
    terrain.outline = OutlineOf(heights, SpanOf(heights), terrain.document->Session().Ground());
    AdaptToFirstView(*terrain.document, terrain.outline, settings, size);
    report(kAdapted);
    terrain.conditions = {0, settings.exaggeration,
                          SunlitAtmosphere(settings.sunAzimuth, settings.sunHeight).sunDirection};
    terrain.light = MakeLightMap(heights, settings.exaggeration, terrain.conditions.sun, BackgroundLight::kSide,
                                 [&](double fraction) { report(kAdapted + (1.0 - kAdapted) * fraction); });
    return terrain;
}

ElevationData Coarse(const ElevationData& data, int side)
{
    ElevationData coarse = data;
    coarse.metres.clear();
    coarse.holes.clear();
    // The outermost points stay where they are.
    const auto fit = [side](int& count, double& spacing, double& step) {
        const int fewer = std::min(count, side);
        const double wider = fewer > 1 ? (count - 1.0) / (fewer - 1.0) : 1.0;
        spacing *= wider;
        step *= wider;
        count = fewer;
    };
    fit(coarse.width, coarse.spacingX, coarse.stepX);
    fit(coarse.height, coarse.spacingY, coarse.stepY);
    const auto source = [](int index, int count, int from) {
        return count > 1 ? static_cast<std::size_t>(std::int64_t{index} * (from - 1) / (count - 1)) : std::size_t{0};
    };
    coarse.metres.reserve(static_cast<std::size_t>(coarse.width) * static_cast<std::size_t>(coarse.height));
    for (int row = 0; row < coarse.height; ++row) {
        const float* from =
            data.metres.data() + source(row, coarse.height, data.height) * static_cast<std::size_t>(data.width);
        for (int column = 0; column < coarse.width; ++column)
            coarse.metres.push_back(from[source(column, coarse.width, data.width)]);
    }
    return coarse;
}

}  // namespace tessara
