#include "app/options/view_options.h"

#include "app/options/number_list.h"
#include "app/options/number_range.h"
#include "app/view/framing.h"
#include "host/ground_frame.h"
#include "host/project/project_view.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessara {

namespace {

constexpr int kMaximumSide = 16384;
constexpr double kMaximumPixels = 8192.0 * 8192.0;

/// Share of the picture that stays free around a terrain shown whole.
constexpr double kMargin = 0.04;

constexpr double kAzimuth = 24.0;
constexpr double kTilt = 30.0;
constexpr double kFieldOfView = 36.0;

double Radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

/// The direction of a compass bearing and a downward tilt, in degrees.
Vector3 Direction(double azimuth, double tilt)
{
    const double level = std::cos(Radians(tilt));
    return {level * std::sin(Radians(azimuth)), -std::sin(Radians(tilt)), -level * std::cos(Radians(azimuth))};
}

void AddPoint(CLI::App& command, const char* name, std::optional<Vector3>& point, const char* description)
{
    command
        .add_option_function<std::string>(
            name,
            [&point, name](const std::string& text) {
                const auto numbers = ParseNumbers(text, ',', 3);
                if (numbers.empty())
                    throw CLI::ValidationError(name, "expects three numbers such as 1200,800,2500, not " + text);
                point = Vector3{numbers[0], numbers[1], numbers[2]};
            },
            description)
        ->option_text("E,N,H");
}

void AddSize(CLI::App& command, ViewOptions& view)
{
    command
        .add_option_function<std::string>(
            "--size",
            [&view](const std::string& text) {
                const auto numbers = ParseNumbers(text, 'x', 2);
                const auto fits = [](double side) {
                    return side >= 1.0 && side <= kMaximumSide && side == std::floor(side);
                };
                if (numbers.empty() || !fits(numbers[0]) || !fits(numbers[1]) ||
                    numbers[0] * numbers[1] > kMaximumPixels)
                    throw CLI::ValidationError("--size", "expects two whole numbers such as 1600x900, up to 16384 each "
                                                         "and 67 million pixels in all, not " +
                                                             text);
                view.width = static_cast<int>(numbers[0]);
                view.height = static_cast<int>(numbers[1]);
            },
            "Width and height of the picture in pixels [1600x900]")
        ->option_text("WxH");
}

void Aim(Camera& camera, const ViewOptions& view, const GroundFrame& ground, const std::vector<Vector3>& outline)
{
    const auto place = [&](const Vector3& map) { return ground.FromMap(map.x, map.y, map.z); };
    const Vector3 middle{ground.Width() / 2.0, ground.Relief() / 3.0, ground.Depth() / 2.0};
    camera.SetDirection(Direction(view.azimuth.value_or(kAzimuth), view.tilt.value_or(kTilt)));
    if (view.camera) {
        camera.SetPosition(place(*view.camera));
        camera.LookAt(view.target ? place(*view.target) : middle);
        return;
    }
    FramePoints(camera, outline, kMargin);
    if (view.target) {
        const Vector3 target = place(*view.target);
        const double distance = Dot(middle - camera.Position(), camera.Forward());
        camera.SetPosition(target - camera.Forward() * distance);
    }
}

}  // namespace

void AddViewOptions(CLI::App& command, ViewOptions& view)
{
    AddSize(command, view);
    AddPoint(command, "--camera", view.camera,
             "Where the camera stands: metres east and north of the terrain's\n"
             "south-west corner, and the height in metres as in the file\n"
             "[where it sees all of the terrain]");
    AddPoint(command, "--look-at", view.target, "The point in the middle of the picture [the terrain's middle]");
    command
        .add_option("--azimuth", view.azimuth,
                    "Compass direction that a camera without a place looks in:\n"
                    "0 is north, 90 east [24]")
        ->check(NumberBetween(-360.0, 360.0))
        ->option_text("DEGREES");
    command
        .add_option("--tilt", view.tilt,
                    "How far it looks down: 90 gives a map, with north at the top\n"
                    "for azimuth 0 [30]")
        ->check(NumberBetween(-90.0, 90.0))
        ->option_text("DEGREES");
    command.add_option("--fov", view.fieldOfView, "Field of view across the picture [36]")
        ->check(NumberBetween(1.0, 170.0))
        ->option_text("DEGREES");
    command
        .add_option("--lod", view.levelOfDetail,
                    "Level of detail: a height that would be 1 m off is put right out\n"
                    "to this distance [such that errors stay below a pixel]")
        ->check(NumberBetween(0.0, 1e9))
        ->option_text("METRES");
    command
        .add_option("--frames", view.frames,
                    "Frames for which the detail adapts to the camera\n"
                    "[until the triangles stay the same]")
        ->check(NumberBetween(1, 10000))
        ->option_text("N");
}

ProjectView ToRemember(const ViewOptions& view)
{
    ProjectView remembered;
    remembered.camera = view.camera;
    remembered.target = view.target;
    remembered.azimuth = view.azimuth;
    remembered.tilt = view.tilt;
    remembered.fieldOfView = view.fieldOfView;
    remembered.levelOfDetail = view.levelOfDetail;
    return remembered;
}

void FillIn(ViewOptions& view, const ProjectView& remembered)
{
    const auto fill = [](auto& option, const auto& value) {
        if (!option)
            option = value;
    };
    const bool aimed = view.camera || view.target || view.azimuth || view.tilt;
    if (!aimed) {
        view.camera = remembered.camera;
        view.target = remembered.target;
    }
    if (!view.camera) {
        fill(view.azimuth, remembered.azimuth);
        fill(view.tilt, remembered.tilt);
    }
    fill(view.fieldOfView, remembered.fieldOfView);
    fill(view.levelOfDetail, remembered.levelOfDetail);
}

ComPtr<Camera> MakeCamera(const ViewOptions& view, const GroundFrame& ground, const std::vector<Vector3>& outline)
{
    const double fieldOfView = view.fieldOfView.value_or(kFieldOfView);
    auto camera = MakeObject<Camera>();
    camera->SetDrawUnits(ground.DrawUnits());
    camera->SetViewport(view.width, view.height);
    camera->SetLens(fieldOfView, 1.0, 2.0);
    Aim(*camera, view, ground, outline);
    const DepthRange depth = DepthOf(*camera, outline);
    const double farthest = std::max(depth.farthest, ground.DrawUnits().x) * 1.01;
    camera->SetLens(fieldOfView, std::max(depth.nearest * 0.9, farthest / 20000.0), farthest);
    return camera;
}

double LevelOfDetailOf(const ViewOptions& view, double pixels)
{
    const double pixelsAtOne = view.width / (2.0 * std::tan(Radians(view.fieldOfView.value_or(kFieldOfView)) / 2.0));
    return view.levelOfDetail.value_or(pixelsAtOne / pixels);
}

}  // namespace tessara
