#include "app/view/aim.h"

#include "app/view/framing.h"
#include "host/ground_frame.h"
#include "host/project/project_view.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessara {

namespace {

/// Share of the picture that stays free around a terrain shown whole.
constexpr double kMargin = 0.04;

/// Sine of the angle to the vertical below which a direction has no compass bearing.
constexpr double kUpright = 1e-9;

/// The least near distance of a lens, in far distances: what a depth buffer of 24 bits can do.
constexpr double kNearest = 1.0 / 30000.0;

double Radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

double Degrees(double radians)
{
    return radians * 180.0 / std::numbers::pi;
}

/// Turns a pose towards a point. Straight above or below it, the azimuth says what is up in the picture.
void LookAt(Pose& pose, const Vector3& target)
{
    const Vector3 way = target - pose.position;
    const double level = std::hypot(way.x, way.z);
    if (level > kUpright * Length(way))
        pose.azimuth = Degrees(std::atan2(way.x, -way.z));
    if (Length(way) > 0.0)
        pose.tilt = Degrees(std::atan2(-way.y, level));
}

/// Up follows the azimuth, so that it has a meaning when the camera looks straight down too.
void Turn(Camera& camera, const Pose& pose)
{
    camera.SetUp(DirectionOf(pose.azimuth, pose.tilt - 90.0));
    camera.SetDirection(DirectionOf(pose.azimuth, pose.tilt));
}

/// Where a camera that looks in the pose's direction sees all of the terrain.
Vector3 PlaceForAll(const Pose& pose, const std::vector<Vector3>& points, int width, int height)
{
    const auto camera = MakeObject<Camera>();
    camera->SetViewport(width, height);
    camera->SetLens(pose.fieldOfView, 1.0, 2.0);
    Turn(*camera, pose);
    FramePoints(*camera, points, kMargin);
    return camera->Position();
}

}  // namespace

Aim AimOf(const ProjectView& view)
{
    return {view.camera, view.target, view.azimuth, view.tilt, view.fieldOfView, view.levelOfDetail};
}

void Remember(const Aim& aim, ProjectView& view)
{
    view.camera = aim.camera;
    view.target = aim.target;
    view.azimuth = aim.azimuth;
    view.tilt = aim.tilt;
    view.fieldOfView = aim.fieldOfView;
    view.levelOfDetail = aim.levelOfDetail;
}

Vector3 DirectionOf(double azimuth, double tilt)
{
    const double level = std::cos(Radians(tilt));
    return {level * std::sin(Radians(azimuth)), -std::sin(Radians(tilt)), -level * std::cos(Radians(azimuth))};
}

Pose PoseOf(const Aim& aim, const GroundFrame& ground, const Outline& outline, int width, int height)
{
    const auto place = [&](const Vector3& map) { return ground.FromMap(map.x, map.y, map.z); };
    Pose pose{{}, aim.azimuth.value_or(kAzimuth), aim.tilt.value_or(kTilt), aim.fieldOfView.value_or(kFieldOfView)};
    if (aim.camera) {
        pose.position = place(*aim.camera);
        if (aim.target)
            LookAt(pose, place(*aim.target));
        else if (!aim.azimuth && !aim.tilt)
            LookAt(pose, outline.middle);
        return pose;
    }
    pose.position = PlaceForAll(pose, outline.points, width, height);
    if (aim.target) {
        const Vector3 forward = DirectionOf(pose.azimuth, pose.tilt);
        pose.position = place(*aim.target) - forward * Dot(outline.middle - pose.position, forward);
    }
    return pose;
}

Aim AimOf(const Pose& pose, const Vector3& focus, const GroundFrame& ground)
{
    return {ground.ToMap(pose.position), ground.ToMap(focus), pose.azimuth, pose.tilt, pose.fieldOfView, {}};
}

void Place(Camera& camera, const Pose& pose, const Outline& outline, double above)
{
    Turn(camera, pose);
    camera.SetPosition(pose.position);
    const DepthRange depth = DepthOf(camera, outline.points);
    const double farthest = std::max(depth.farthest, 0.01 * outline.size) * 1.01;
    const double nearest = std::min(depth.nearest * 0.9, std::fabs(above) * 0.5);
    camera.SetLens(pose.fieldOfView, std::max(nearest, farthest * kNearest), farthest);
}

double LevelOfDetailFor(double fieldOfView, int width, double pixels)
{
    return width / (2.0 * std::tan(Radians(fieldOfView) / 2.0)) / pixels;
}

double AzimuthOf(const Camera& camera)
{
    return Degrees(std::atan2(camera.Right().z, camera.Right().x));
}

std::pair<double, double> SunBeside(double azimuth)
{
    return {std::fmod(azimuth + 280.0, 360.0), 38.0};
}

}  // namespace tessara
