#include "app/options/view_options.h"

#include "app/options/number_list.h"
#include "app/options/number_range.h"
#include "app/view/framing.h"
#include "host/elevation/elevation_data.h"
#include "host/ground_frame.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

constexpr int kMaximumSide = 16384;
constexpr double kMaximumPixels = 8192.0 * 8192.0;

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

/// Height of an eye above the highest ground next to it, in true space.
double HeightAbove(const Vector3& eye, const ElevationData& data, const GroundFrame& ground)
{
    const auto cell = [](double place, double unit, int count) {
        return static_cast<int>(std::clamp(place / unit, 0.0, count - 1.0));
    };
    const int column = cell(eye.x, ground.DrawUnits().x, data.width);
    const int row = cell(eye.z, ground.DrawUnits().z, data.height);
    double highest = std::numeric_limits<double>::lowest();
    for (const int y : {row, std::min(row + 1, data.height - 1)}) {
        for (const int x : {column, std::min(column + 1, data.width - 1)}) {
            const auto index =
                static_cast<std::size_t>(x) + static_cast<std::size_t>(y) * static_cast<std::size_t>(data.width);
            highest = std::max(highest, ground.FromGrid(x, y, static_cast<double>(data.metres[index])).y);
        }
    }
    return eye.y - highest;
}

}  // namespace

void AddViewOptions(CLI::App& command, ViewOptions& view)
{
    AddSize(command, view);
    AddPoint(command, "--camera", view.aim.camera,
             "Where the camera stands: metres east and north of the terrain's\n"
             "south-west corner, and the height in metres as in the file\n"
             "[where it sees all of the terrain]");
    AddPoint(command, "--look-at", view.aim.target, "The point in the middle of the picture [the terrain's middle]");
    command
        .add_option("--azimuth", view.aim.azimuth,
                    "Compass direction that the camera looks in where no point to\n"
                    "look at says otherwise: 0 is north, 90 east [24]")
        ->check(NumberBetween(-360.0, 360.0))
        ->option_text("DEGREES");
    command
        .add_option("--tilt", view.aim.tilt,
                    "How far it looks down: 90 gives a map, with north at the top\n"
                    "for azimuth 0 [30]")
        ->check(NumberBetween(-90.0, 90.0))
        ->option_text("DEGREES");
    command.add_option("--fov", view.aim.fieldOfView, "Field of view across the picture [36]")
        ->check(NumberBetween(1.0, 170.0))
        ->option_text("DEGREES");
    command
        .add_option("--lod", view.aim.levelOfDetail,
                    "Level of detail: a height that would be 1 m off is put right out\n"
                    "to this distance [such that errors stay below a pixel]")
        ->check(NumberBetween(0.0, 1e9))
        ->option_text("METRES");
    command
        .add_option("--frames", view.frames,
                    "Frames for which the detail adapts to the camera\n"
                    "[until the triangles stay the same]")
        ->check(WholeNumberBetween(1, 10000))
        ->option_text("N");
}

void RefuseIdleOptions(const Aim& aim)
{
    if (aim.camera && aim.target && (aim.azimuth || aim.tilt))
        throw CLI::ValidationError(aim.azimuth ? "--azimuth" : "--tilt", "has no effect with --camera and --look-at");
}

ComPtr<Camera> MakeCamera(const ViewOptions& view, const ElevationData& data, const HeightSpan& span,
                          const GroundFrame& ground)
{
    const Outline outline = OutlineOf(data, span, ground);
    const Pose pose = PoseOf(view.aim, ground, outline, view.width, view.height);
    auto camera = MakeObject<Camera>();
    camera->SetDrawUnits(ground.DrawUnits());
    camera->SetViewport(view.width, view.height);
    Place(*camera, pose, outline, HeightAbove(pose.position, data, ground));
    return camera;
}

double LevelOfDetailOf(const ViewOptions& view, double pixels)
{
    return view.aim.levelOfDetail.value_or(
        LevelOfDetailFor(view.aim.fieldOfView.value_or(kFieldOfView), view.width, pixels));
}

}  // namespace tessara
