// Measures how far the drawn surface is off the heights of an elevation file, in pixels of the picture, from cameras of
// every kind, and with how many triangles:
//
//   detail_error FILE [--pixels N] [--columns FACTOR] [--view KIND] [--eye] [--each]
//
// --columns takes columns for so many times as far apart as they are. --eye draws for the eye itself in place of a
// DetailCamera. --view takes views of one kind, --each shows every view in place of the worst of each kind.

#include "app/output/frame_dump.h"
#include "app/output/polygon_text.h"
#include "app/view/framing.h"
#include "app/view/height_span.h"
#include "camera_path.h"
#include "host/camera.h"
#include "host/detail_camera.h"
#include "host/elevation/elevation_file.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "mesh_error.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

using namespace tessara;

namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;

struct Options {
    std::string file;
    double pixels = 0.7;
    double columns = 1.0;
    bool eye = false;
    bool each = false;
    std::string view;
};

/// What was measured of one view or of all of a kind.
struct Figures {
    double triangles = 0.0;
    double greatest = 0.0;
    double most = 0.0;
    double mean = 0.0;
    double search = 0.0;  // microseconds
    int views = 0;
};

Options OptionsOf(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--pixels" && hasValue)
            options.pixels = std::atof(argv[++i]);
        else if (argument == "--columns" && hasValue)
            options.columns = std::atof(argv[++i]);
        else if (argument == "--view" && hasValue)
            options.view = argv[++i];
        else if (argument == "--eye")
            options.eye = true;
        else if (argument == "--each")
            options.each = true;
        else
            options.file = argument;
    }
    return options;
}

ComPtr<Camera> CameraOf(const Aim& aim, const ElevationData& data, const GroundFrame& ground)
{
    const Outline outline = OutlineOf(data, SpanOf(data), ground);
    auto camera = MakeObject<Camera>();
    camera->SetDrawUnits(ground.DrawUnits());
    camera->SetViewport(kWidth, kHeight);
    Place(*camera, PoseOf(aim, ground, outline, kWidth, kHeight), outline, 1.0);
    return camera;
}

/// The frame of the eye itself, as a host draws it that knows no better.
PolygonText DumpForEye(TerrainSession& terrain, Camera& camera)
{
    PolygonText polygons;
    terrain.Surface().SetLOD(static_cast<float>(terrain.LevelOfDetail()));
    TerrainFrustum* frustum = nullptr;
    camera.GetFrustum(&frustum);
    for (FrustumPlane& plane : frustum->WorldPlanes)
        plane = {};
    for (int step = 0; step < 12; ++step) {
        polygons = {};
        terrain.ReadPolygons(camera, [&](std::string_view text) { polygons.Append(text); });
    }
    return polygons;
}

double MicrosecondsToFollow(TerrainSession& terrain, const Camera& camera)
{
    using Clock = std::chrono::steady_clock;
    const auto detail = MakeObject<DetailCamera>();
    terrain.Follow(*detail, camera);
    const auto start = Clock::now();
    for (int i = 0; i < 20; ++i)
        terrain.Follow(*detail, camera);
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count() / 20.0;
}

Figures Measure(const Options& options, const ElevationData& data, TerrainSession& terrain, const Aim& aim)
{
    const auto camera = CameraOf(aim, data, terrain.Ground());
    terrain.SetLevelOfDetail(LevelOfDetailFor(aim.fieldOfView.value_or(kFieldOfView), kWidth, options.pixels));
    const double search = MicrosecondsToFollow(terrain, *camera);
    const std::uint64_t seen = options.eye ? 0 : DumpFrame(terrain, *camera, 0, FrameExtent::Seen).Triangles();
    const PolygonText polygons =
        options.eye ? DumpForEye(terrain, *camera) : DumpFrame(terrain, *camera, 0, FrameExtent::Whole);
    const MeshError error = MeasureError(SurfaceHeights(polygons, data, terrain), data, terrain, *camera);
    return {static_cast<double>(options.eye ? polygons.Triangles() : seen),
            error.greatest,
            error.most,
            error.mean,
            search,
            1};
}

void Print(const std::string& name, const Figures& figures)
{
    std::printf("%-30s %9.0f %9.3f %9.3f %9.3f %9.0f\n", name.c_str(), figures.triangles / figures.views,
                figures.greatest, figures.most, figures.mean / figures.views, figures.search / figures.views);
}

void Run(const Options& options)
{
    ElevationData data = ReadElevationFile(options.file);
    data.spacingX *= options.columns;
    ScanHeights(data);
    const auto host = MakeObject<KvoHost>(nullptr, nullptr);
    TerrainSession terrain(data, {.border = kDrawnBorder}, ComPtr<IKvoHost>(host.Get()));
    std::printf("%-30s %9s %9s %9s %9s %9s\n", "view", "triangles", "greatest", "99.9 %", "mean", "search us");
    Figures all;
    Figures kind;
    std::vector<PathPoint> path = CameraPath(data);
    std::erase_if(path, [&](const PathPoint& point) { return point.kind.find(options.view) == std::string::npos; });
    const auto add = [](Figures& to, const Figures& figures) {
        to = {to.triangles + figures.triangles, std::max(to.greatest, figures.greatest),
              std::max(to.most, figures.most),  to.mean + figures.mean,
              to.search + figures.search,       to.views + figures.views};
    };
    for (std::size_t i = 0; i < path.size(); ++i) {
        const Figures figures = Measure(options, data, terrain, path[i].aim);
        add(all, figures);
        add(kind, figures);
        if (options.each || i + 1 == path.size() || path[i + 1].kind != path[i].kind) {
            Print(path[i].kind, kind);
            kind = {};
        }
    }
    Print("all", all);
}

}  // namespace

int main(int argc, char** argv)
{
    const Options options = OptionsOf(argc, argv);
    if (options.file.empty()) {
        std::fprintf(stderr, "detail_error FILE [--pixels N] [--columns FACTOR] [--view KIND] [--eye] [--each]\n");
        return 2;
    }
    try {
        Run(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
