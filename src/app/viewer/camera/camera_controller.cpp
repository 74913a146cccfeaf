#include "app/viewer/camera/camera_controller.h"

#include "host/ground_frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace tessara {

namespace {

constexpr double kLowestTilt = -80.0;   // degrees, looking up
constexpr double kOrbitDegrees = 0.35;  // for a pixel
constexpr double kZoomStep = 0.85;      // of the distance that is left after a step of the wheel
constexpr double kFlySpeed = 0.9;       // heights above ground in a second
constexpr double kFast = 4.0;

/// Nobody gets lost: the camera stays within so many lengths of the terrain around it, flying within less.
constexpr double kReach = 20.0;
constexpr double kFlyReach = 3.0;

/// A zoom ends this many clearances before its target, so that the eye needn't be lifted much off the way to it.
constexpr double kZoomEnd = 6.0;

/// So often a pan gets higher over rising ground before it gives in.
constexpr int kMostLifts = 8;

/// The horizon is too far away to be grabbed where a ray falls by less than this.
constexpr double kShallow = 0.12;

double Radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

double Degrees(double radians)
{
    return radians * 180.0 / std::numbers::pi;
}

double Wrapped(double azimuth)
{
    const double turned = std::fmod(azimuth, 360.0);
    const double wrapped = turned < 0.0 ? turned + 360.0 : turned;
    return wrapped < 360.0 ? wrapped : 0.0;  // a tiny negative angle rounds up to the full circle
}

}  // namespace

CameraController::CameraController(Camera& camera, const GroundModel& ground, const GroundFrame& frame)
    : camera_(camera), ground_(ground), frame_(frame)
{
    camera_.SetDrawUnits(frame.DrawUnits());
    const Vector3 corner{frame.Width(), frame.Relief(), frame.Depth()};
    outline_ = {{{0.0, 0.0, 0.0}, corner}, corner * 0.5, Size()};
    Follow({});
}

void CameraController::SetOutline(Outline outline)
{
    outline_ = std::move(outline);
    GroundChanged();
}

void CameraController::GroundChanged()
{
    KeepAboveGround();
    Apply();
}

void CameraController::Resize(int width, int height)
{
    if (std::max(width, 1) == width_ && std::max(height, 1) == height_)
        return;
    width_ = std::max(width, 1);
    height_ = std::max(height, 1);
    TakePose();
}

void CameraController::ScaleHeights(double factor)
{
    const double before = ground_.HeightAt(pose_.position.x, pose_.position.z) / factor;
    MoveTo(pose_.position + Vector3{0.0, ground_.HeightAt(pose_.position.x, pose_.position.z) - before, 0.0}, kReach);
    Apply();
}

double CameraController::HeightAboveGround() const
{
    return pose_.position.y - ground_.HeightAt(pose_.position.x, pose_.position.z);
}

Vector3 CameraController::RayThrough(const PicturePoint& point) const
{
    const double x = (2.0 * point.x / width_ - 1.0) * camera_.HalfWidth();
    const double y = (1.0 - 2.0 * point.y / height_) * camera_.HalfHeight();
    return Normalised(camera_.Forward() + camera_.Right() * x + camera_.Up() * y);
}

std::optional<Vector3> CameraController::PointAt(const PicturePoint& point) const
{
    return ground_.Pick(pose_.position, RayThrough(point));
}

Vector3 CameraController::Focus() const
{
    if (const auto point = PointAt({width_ * 0.5, height_ * 0.5}))
        return *point;
    const Vector3 middle{frame_.Width() * 0.5, ground_.HeightAt(frame_.Width() * 0.5, frame_.Depth() * 0.5),
                         frame_.Depth() * 0.5};
    const double distance = std::max(Dot(middle - pose_.position, camera_.Forward()), 0.1 * Size());
    return pose_.position + camera_.Forward() * distance;
}

void CameraController::Grab(const PicturePoint& point)
{
    grabbedAt_ = point;
    const double distance = Length(Focus() - pose_.position);
    grabbed_ = PointAt(point).value_or(pose_.position + RayThrough(point) * distance);
}

/// Turns around the grabbed point, and then moves so that it stands where the mouse has gone.
void CameraController::OrbitTo(const PicturePoint& point)
{
    const double distance = Length(grabbed_ - pose_.position);
    pose_.azimuth = Wrapped(pose_.azimuth + (point.x - grabbedAt_.x) * kOrbitDegrees);
    // A camera that looks up, as one that flies may, isn't jerked down.
    pose_.tilt = std::clamp(pose_.tilt + (point.y - grabbedAt_.y) * kOrbitDegrees, std::min(pose_.tilt, 0.0), 90.0);
    grabbedAt_ = point;
    Apply();
    MoveHolding(grabbed_ - RayThrough(point) * distance, point, grabbed_);
}

/// Over the ground where it is seen from above, else across the view.
void CameraController::PanTo(const PicturePoint& point)
{
    const Vector3 ray = RayThrough(point);
    const bool level = ray.y < -kShallow && grabbed_.y < pose_.position.y;
    const double depth = std::max(Dot(grabbed_ - pose_.position, camera_.Forward()), Clearance());
    const double across = depth / std::max(Dot(ray, camera_.Forward()), 1e-6);
    grabbedAt_ = point;
    Vector3 place = grabbed_ - ray * (level ? (grabbed_.y - pose_.position.y) / ray.y : across);
    for (int lifts = 0; level && lifts < kMostLifts; ++lifts) {
        MoveTo(place, kReach);
        if (pose_.position.y <= place.y)
            break;
        place = grabbed_ - ray * ((grabbed_.y - pose_.position.y) / ray.y);  // from higher up, over higher ground
    }
    MoveHolding(place, point, grabbed_);
}

void CameraController::Zoom(const PicturePoint& point, double steps)
{
    const Vector3 ray = RayThrough(point);
    const auto picked = PointAt(point);
    const Vector3 target = picked ? *picked : pose_.position + ray * Length(Focus() - pose_.position);
    const double distance = Length(pose_.position - target);
    const double nearest = std::min(distance, kZoomEnd * Clearance());
    const double farthest = std::max(distance, kReach * Size());
    const double moved = std::clamp(distance * std::pow(kZoomStep, steps), nearest, farthest);
    MoveHolding(target - ray * moved, point, target);
}

void CameraController::Step(double right, double forward, double up)
{
    const double distance = Length(Focus() - pose_.position);
    const double compass = Radians(pose_.azimuth);
    MoveTo(pose_.position + Vector3{std::cos(compass), 0.0, std::sin(compass)} * (right * distance) +
               Vector3{std::sin(compass), 0.0, -std::cos(compass)} * (forward * distance) +
               Vector3{0.0, up * distance, 0.0},
           kReach);
    Apply();
}

void CameraController::Look(double right, double down)
{
    Moved();
    pose_.azimuth = Wrapped(pose_.azimuth + right);
    pose_.tilt = std::clamp(pose_.tilt + down, kLowestTilt, 90.0);
    Apply();
}

void CameraController::Fly(const FlyInput& input, double seconds)
{
    // Beside the terrain it is the way back that counts.
    const double outside = std::hypot(pose_.position.x - std::clamp(pose_.position.x, 0.0, frame_.Width()),
                                      pose_.position.z - std::clamp(pose_.position.z, 0.0, frame_.Depth()));
    const double height = std::max({HeightAboveGround(), 4.0 * Clearance(), 0.5 * outside});
    const double speed = kFlySpeed * height * (input.fast ? kFast : 1.0);
    const Vector3 move = camera_.Forward() * input.forward + camera_.Right() * input.right +
                         Vector3{0.0, static_cast<double>(input.up), 0.0};
    MoveTo(pose_.position + Normalised(move) * (speed * seconds), kFlyReach);
    Apply();
}

void CameraController::Follow(const Aim& aim)
{
    aim_ = aim;
    moved_ = false;
    TakePose();
}

void CameraController::ShowAll()
{
    Follow(
        {.camera = {}, .target = {}, .azimuth = {}, .tilt = {}, .fieldOfView = pose_.fieldOfView, .levelOfDetail = {}});
    moved_ = true;
}

/// The pose of the aim for the picture's size, while there is one.
void CameraController::TakePose()
{
    if (aim_) {
        pose_ = PoseOf(*aim_, frame_, outline_, width_, height_);
        pose_.azimuth = Wrapped(pose_.azimuth);
    }
    Apply();
}

void CameraController::Moved()
{
    aim_.reset();
    moved_ = true;
}

void CameraController::NorthUp()
{
    TurnAround(Focus(), 0.0, pose_.tilt);
}

void CameraController::FromTop()
{
    TurnAround(Focus(), pose_.azimuth, 90.0);
}

void CameraController::GoTo(double x, double z)
{
    const Vector3 focus = Focus();
    const Vector3 target{x, ground_.HeightAt(x, z), z};
    MoveHolding(pose_.position + (target - focus), {width_ * 0.5, height_ * 0.5}, target);
}

void CameraController::Place(const Vector3& position, double azimuth, double tilt)
{
    if (!std::isfinite(Length(position)) || !std::isfinite(azimuth) || !std::isfinite(tilt))
        return;
    Moved();
    pose_.position = position;
    pose_.azimuth = Wrapped(azimuth);
    pose_.tilt = std::clamp(tilt, kLowestTilt, 90.0);
    KeepAboveGround();
    Apply();
}

void CameraController::TurnAround(const Vector3& pivot, double azimuth, double tilt)
{
    const double distance = Length(pivot - pose_.position);
    pose_.azimuth = azimuth;
    pose_.tilt = tilt;
    MoveHolding(pivot - DirectionOf(pose_.azimuth, pose_.tilt) * distance, {width_ * 0.5, height_ * 0.5}, pivot);
}

/// Goes to a place, or as near to it as the ground and the reach allow. \param reach lengths of the terrain around it;
/// a camera that is farther away may stay there
void CameraController::MoveTo(const Vector3& place, double reach)
{
    Moved();
    const auto within = [room = reach * Size()](double to, double from, double extent) {
        return std::clamp(to, std::min(-room, from), std::max(extent + room, from));
    };
    pose_.position = {within(place.x, pose_.position.x, frame_.Width()),
                      within(place.y, pose_.position.y, frame_.Relief()),
                      within(place.z, pose_.position.z, frame_.Depth())};
    KeepAboveGround();
}

/// Goes to a place from which a target stands at a point of the picture. Where the camera can't get there, it turns to
/// have it there all the same.
void CameraController::MoveHolding(const Vector3& place, const PicturePoint& point, const Vector3& target)
{
    MoveTo(place, kReach);
    if (Length(pose_.position - place) > 0.0)
        AimAt(point, target);
    Apply();
}

/// The horizon stays level, so a direction of view brings the target to the point, or there is none.
void CameraController::AimAt(const PicturePoint& point, const Vector3& target)
{
    const double x = (2.0 * point.x / width_ - 1.0) * camera_.HalfWidth();
    const double y = (1.0 - 2.0 * point.y / height_) * camera_.HalfHeight();
    const Vector3 direction = Normalised(target - pose_.position);
    // Upright: y cos(tilt) - sin(tilt) = rise.
    const double rise = direction.y * std::sqrt(x * x + y * y + 1.0);
    const double share = rise / std::hypot(1.0, y);
    if (Length(direction) == 0.0 || std::fabs(share) > 1.0)
        return;
    const double tilt = std::acos(share) - std::atan2(1.0, y);
    if (Degrees(tilt) < kLowestTilt || Degrees(tilt) > 90.0)
        return;
    pose_.tilt = Degrees(tilt);
    const double across = std::atan2(x, std::cos(tilt) + y * std::sin(tilt));
    pose_.azimuth = Wrapped(Degrees(std::atan2(direction.x, -direction.z) - across));
}

double CameraController::Size() const
{
    return std::max({frame_.Width(), frame_.Depth(), frame_.Relief(), frame_.DrawUnits().x});
}

/// How near the eye may come to the ground, so that the lens doesn't cut into it.
double CameraController::Clearance() const
{
    return 2e-4 * Size();
}

void CameraController::KeepAboveGround()
{
    const double floor = ground_.Contains(pose_.position.x, pose_.position.z)
                             ? ground_.HeightAt(pose_.position.x, pose_.position.z)
                             : 0.0;
    if (pose_.position.y >= floor + Clearance())
        return;
    pose_.position.y = floor + Clearance();
    Moved();
}

void CameraController::Apply()
{
    camera_.SetViewport(width_, height_);
    tessara::Place(camera_, pose_, outline_, HeightAboveGround());
    if (onMove_)
        onMove_();
}

}  // namespace tessara
