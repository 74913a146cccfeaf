#include "host/project/project_view.h"

#include "host/project/project_place.h"

#include <limits>

namespace tessara {

namespace {

constexpr const char* kCamera[] = {"camera.east", "camera.north", "camera.height"};
constexpr const char* kTarget[] = {"target.east", "target.north", "target.height"};
constexpr const char* kAzimuth = "camera.azimuth";
constexpr const char* kTilt = "camera.tilt";
constexpr const char* kFieldOfView = "camera.fieldOfView";
constexpr const char* kLevelOfDetail = "levelOfDetail";
constexpr const char* kSunAzimuth = "sun.azimuth";
constexpr const char* kSunHeight = "sun.height";
constexpr const char* kColor = "color";
constexpr const char* kColorMix = "color.mix";
constexpr const char* kSea = "sea";
constexpr const char* kSeaLevel = "sea.level";
constexpr const char* kHoles = "holes";
constexpr const char* kPalette = "palette";

std::optional<double> Number(const ProjectSettings& settings, const char* name, double lowest, double highest)
{
    const double number = NumberOf(settings, name, std::numeric_limits<double>::quiet_NaN());
    return number >= lowest && number <= highest ? std::optional(number) : std::nullopt;
}

std::optional<bool> Switch(const ProjectSettings& settings, const char* name)
{
    const std::optional<double> number = Number(settings, name, 0.0, 1.0);
    return number ? std::optional(*number != 0.0) : std::nullopt;
}

/// A point whose three coordinates are there, on any planet.
std::optional<Vector3> Point(const ProjectSettings& settings, const char* const (&names)[3])
{
    constexpr double kFarthest = 1e9;
    std::optional<double> numbers[3];
    for (int axis = 0; axis < 3; ++axis)
        numbers[axis] = Number(settings, names[axis], -kFarthest, kFarthest);
    return numbers[0] && numbers[1] && numbers[2] ? std::optional(Vector3{*numbers[0], *numbers[1], *numbers[2]})
                                                  : std::nullopt;
}

void Remember(ProjectPlace& place, const char* name, const std::optional<double>& number)
{
    if (number)
        place.Set(name, *number);
}

void Remember(ProjectPlace& place, const char* name, const std::optional<bool>& on)
{
    if (on)
        place.Set(name, *on ? 1.0 : 0.0);
}

void Remember(ProjectPlace& place, const char* const (&names)[3], const std::optional<Vector3>& point)
{
    if (!point)
        return;
    place.Set(names[0], point->x);
    place.Set(names[1], point->y);
    place.Set(names[2], point->z);
}

void Forget(ProjectPlace& place, const char* const (&names)[3])
{
    for (const char* name : names)
        place.Forget(name);
}

void ForgetDirection(ProjectPlace& place)
{
    for (const char* name : {kAzimuth, kTilt})
        place.Forget(name);
}

}  // namespace

ProjectView ViewOf(const ProjectSettings& settings)
{
    ProjectView view;
    view.camera = Point(settings, kCamera);
    view.target = Point(settings, kTarget);
    view.azimuth = Number(settings, kAzimuth, -360.0, 360.0);
    view.tilt = Number(settings, kTilt, -90.0, 90.0);
    view.fieldOfView = Number(settings, kFieldOfView, 1.0, 170.0);
    view.levelOfDetail = Number(settings, kLevelOfDetail, 0.0, 1e9);
    const auto azimuth = Number(settings, kSunAzimuth, -360.0, 360.0);
    const auto height = Number(settings, kSunHeight, 0.0, 90.0);
    if (azimuth && height)
        view.sun = {*azimuth, *height};
    view.color = Switch(settings, kColor);
    view.mixColors = Switch(settings, kColorMix);
    view.sea = Switch(settings, kSea);
    view.seaLevel = Number(settings, kSeaLevel, -1e6, 1e6);
    view.holes = Switch(settings, kHoles);
    view.palette = TextOf(settings, kPalette);
    return view;
}

void RememberView(ProjectPlace& place, const ProjectView& view)
{
    if (view.camera) {
        Forget(place, kTarget);
        ForgetDirection(place);
    } else if (view.azimuth || view.tilt) {
        Forget(place, kCamera);
        Forget(place, kTarget);
    }
    Remember(place, kCamera, view.camera);
    Remember(place, kTarget, view.target);
    Remember(place, kAzimuth, view.azimuth);
    Remember(place, kTilt, view.tilt);
    Remember(place, kFieldOfView, view.fieldOfView);
    Remember(place, kLevelOfDetail, view.levelOfDetail);
    if (view.sun) {
        place.Set(kSunAzimuth, view.sun->first);
        place.Set(kSunHeight, view.sun->second);
    }
    Remember(place, kColor, view.color);
    Remember(place, kColorMix, view.mixColors);
    Remember(place, kSea, view.sea);
    Remember(place, kSeaLevel, view.seaLevel);
    Remember(place, kHoles, view.holes);
    if (!view.palette.empty())
        place.Set(kPalette, view.palette);
}

void ForgetView(ProjectPlace& place)
{
    Forget(place, kCamera);
    Forget(place, kTarget);
    ForgetDirection(place);
    for (const char* name : {kFieldOfView, kLevelOfDetail, kSunAzimuth, kSunHeight})
        place.Forget(name);
}

void ForgetSea(ProjectPlace& place)
{
    place.Forget(kSea);
    place.Forget(kSeaLevel);
}

void ForgetLevelOfDetail(ProjectPlace& place)
{
    place.Forget(kLevelOfDetail);
}

}  // namespace tessara
