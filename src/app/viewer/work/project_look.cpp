#include "app/viewer/work/project_look.h"

#include "app/view/palettes.h"
#include "app/viewer/camera/camera_controller.h"
#include "app/viewer/work/setting_table.h"
#include "host/ground_frame.h"
#include "host/project/project_place.h"
#include "host/project/project_terrain.h"
#include "host/vector3.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessara {

namespace {

constexpr const char* kLow = "palette.low";
constexpr const char* kHigh = "palette.high";

double Degrees(double radians)
{
    return radians * 180.0 / std::numbers::pi;
}

bool IsRamp(const std::string& name)
{
    const auto names = PaletteNames();
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

bool ProjectLook::operator==(const ProjectLook& other) const
{
    return IsSameWork(settings, other.settings) && colors == other.colors;
}

ViewSettings WithLook(ViewSettings settings, const ProjectTerrain& terrain, const ProjectSettings& stored)
{
    settings.exaggeration = terrain.exaggeration;
    if (terrain.view.sun) {
        settings.sunAzimuth = std::fmod(terrain.view.sun->first + 360.0, 360.0);
        settings.sunHeight = std::clamp(terrain.view.sun->second, 1.0, 90.0);
    }
    settings.vertexColors = terrain.view.color.value_or(settings.vertexColors);
    settings.ramp = IsRamp(terrain.view.palette) ? terrain.view.palette : std::string();
    for (const Setting& each : AllSettings()) {
        if (!each.inProject)
            continue;
        if (each.kind == Setting::Kind::Choice)
            each.TakeText(settings, TextOf(stored, each.inProject));
        else
            each.Take(settings, NumberOf(stored, each.inProject, each.get(settings)));
    }
    settings.frozen = false;
    return settings;
}

HeightColors ColorsOf(const ProjectTerrain& terrain, const ProjectSettings& stored, double low, double high)
{
    if (!IsRamp(terrain.view.palette))
        return {{},
                static_cast<double>(terrain.data.minimum),
                static_cast<double>(terrain.data.maximum),
                std::make_shared<const ElevationPalette>(terrain.palette)};
    low = NumberOf(stored, kLow, low);
    high = NumberOf(stored, kHigh, high);
    return {terrain.view.palette, low, std::max(high, low), nullptr};
}

ProjectView ViewFor(const ProjectLook& look, const CameraController& camera, const GroundFrame& ground)
{
    ProjectView view;
    view.camera = ground.ToMap(camera.Position());
    view.target = ground.ToMap(camera.Focus());
    view.azimuth = camera.Azimuth();
    view.tilt = camera.Tilt();
    view.fieldOfView = camera.FieldOfView();
    view.sun = {look.settings.sunAzimuth, look.settings.sunHeight};
    view.color = look.settings.vertexColors;
    view.palette = look.colors.ramp;
    return view;
}

void RememberLook(ProjectPlace& place, const ProjectLook& look)
{
    for (const Setting& each : AllSettings()) {
        if (!each.inProject)
            continue;
        if (each.kind == Setting::Kind::Choice)
            place.Set(each.inProject, each.TextOf(look.settings));
        else
            place.Set(each.inProject, each.get(look.settings));
    }
    place.Set(kLow, look.colors.low);
    place.Set(kHigh, look.colors.high);
}

void Aim(CameraController& camera, const ProjectView& view, const GroundFrame& ground)
{
    double azimuth = view.azimuth.value_or(camera.Azimuth());
    double tilt = view.tilt.value_or(camera.Tilt());
    if (!view.camera) {
        camera.ShowAll(azimuth, tilt);
        return;
    }
    const Vector3 position = ground.FromMap(view.camera->x, view.camera->y, view.camera->z);
    if (!view.azimuth && !view.tilt) {
        const Vector3 middle{ground.Width() / 2.0, ground.Relief() / 3.0, ground.Depth() / 2.0};
        const Vector3 target = view.target ? ground.FromMap(view.target->x, view.target->y, view.target->z) : middle;
        const Vector3 way = target - position;
        azimuth = Degrees(std::atan2(way.x, -way.z));
        tilt = Degrees(std::atan2(-way.y, std::hypot(way.x, way.z)));
    }
    camera.Place(position, azimuth, tilt);
}

}  // namespace tessara
