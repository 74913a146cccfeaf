#include "app/viewer/camera/camera_controller.h"

#include "app/view/framing.h"
#include "host/ground_frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace tessara {

namespace {

constexpr double kLowestTilt = -80.0;   // degrees, looking up
constexpr double kMargin = 0.04;        // share of the picture that stays free around the whole terrain
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
    outline_ = {{0.0, 0.0, 0.0}, {frame.Width(), frame.Relief(), frame.Depth()}};
    ShowAll();
}

void CameraController::SetOutline(std::vector<Vector3> outline)
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
    if (showsAll_)
        ShowAll();
    else
        Apply();
}

void CameraController::ScaleHeights(double factor)
{
    const double before = ground_.HeightAt(position_.x, position_.z) / factor;
    MoveTo(position_ + Vector3{0.0, ground_.HeightAt(position_.x, position_.z) - before, 0.0}, kReach);
    Apply();
}

double CameraController::HeightAboveGround() const
{
    return position_.y - ground_.HeightAt(position_.x, position_.z);
}

Vector3 CameraController::RayThrough(const PicturePoint& point) const
{
    const double x = (2.0 * point.x / width_ - 1.0) * camera_.HalfWidth();
    const double y = (1.0 - 2.0 * point.y / height_) * camera_.HalfHeight();
    return Normalised(camera_.Forward() + camera_.Right() * x + camera_.Up() * y);
}

std::optional<Vector3> CameraController::PointAt(const PicturePoint& point) const
{
    return ground_.Pick(position_, RayThrough(point));
}

Vector3 CameraController::Focus() const
{
    if (const auto point = PointAt({width_ * 0.5, height_ * 0.5}))
        return *point;
    const Vector3 middle{frame_.Width() * 0.5, ground_.HeightAt(frame_.Width() * 0.5, frame_.Depth() * 0.5),
                         frame_.Depth() * 0.5};
    const double distance = std::max(Dot(middle - position_, camera_.Forward()), 0.1 * Size());
    return position_ + camera_.Forward() * distance;
}

void CameraController::Grab(const PicturePoint& point)
{
    grabbedAt_ = point;
    const double distance = Length(Focus() - position_);
    grabbed_ = PointAt(point).value_or(position_ + RayThrough(point) * distance);
}

/// Turns around the grabbed point, and then moves so that it stands where the mouse has gone.
void CameraController::OrbitTo(const PicturePoint& point)
{
    const double distance = Length(grabbed_ - position_);
    azimuth_ = Wrapped(azimuth_ + (point.x - grabbedAt_.x) * kOrbitDegrees);
    // A camera that looks up, as one that flies may, isn't jerked down.
    tilt_ = std::clamp(tilt_ + (point.y - grabbedAt_.y) * kOrbitDegrees, std::min(tilt_, 0.0), 90.0);
    grabbedAt_ = point;
    Apply();
    MoveHolding(grabbed_ - RayThrough(point) * distance, point, grabbed_);
}

/// Over the ground where it is seen from above, else across the view.
void CameraController::PanTo(const PicturePoint& point)
{
    const Vector3 ray = RayThrough(point);
    const bool level = ray.y < -kShallow && grabbed_.y < position_.y;
    const double depth = std::max(Dot(grabbed_ - position_, camera_.Forward()), Clearance());
    const double across = depth / std::max(Dot(ray, camera_.Forward()), 1e-6);
    grabbedAt_ = point;
    Vector3 place = grabbed_ - ray * (level ? (grabbed_.y - position_.y) / ray.y : across);
    for (int lifts = 0; level && lifts < kMostLifts; ++lifts) {
        MoveTo(place, kReach);
        if (position_.y <= place.y)
            break;
        place = grabbed_ - ray * ((grabbed_.y - position_.y) / ray.y);  // from higher up, over higher ground
    }
    MoveHolding(place, point, grabbed_);
}

void CameraController::Zoom(const PicturePoint& point, double steps)
{
    const Vector3 ray = RayThrough(point);
    const auto picked = PointAt(point);
    const Vector3 target = picked ? *picked : position_ + ray * Length(Focus() - position_);
    const double distance = Length(position_ - target);
    const double nearest = std::min(distance, kZoomEnd * Clearance());
    const double farthest = std::max(distance, kReach * Size());
    const double moved = std::clamp(distance * std::pow(kZoomStep, steps), nearest, farthest);
    MoveHolding(target - ray * moved, point, target);
}

void CameraController::Step(double right, double forward, double up)
{
    const double distance = Length(Focus() - position_);
    const double compass = Radians(azimuth_);
    MoveTo(position_ + Vector3{std::cos(compass), 0.0, std::sin(compass)} * (right * distance) +
               Vector3{std::sin(compass), 0.0, -std::cos(compass)} * (forward * distance) +
               Vector3{0.0, up * distance, 0.0},
           kReach);
    Apply();
}

void CameraController::Look(double right, double down)
{
    showsAll_ = false;
    azimuth_ = Wrapped(azimuth_ + right);
    tilt_ = std::clamp(tilt_ + down, kLowestTilt, 90.0);
    Apply();
}

void CameraController::Fly(const FlyInput& input, double seconds)
{
    // Beside the terrain it is the way back that counts.
    const double outside = std::hypot(position_.x - std::clamp(position_.x, 0.0, frame_.Width()),
                                      position_.z - std::clamp(position_.z, 0.0, frame_.Depth()));
    const double height = std::max({HeightAboveGround(), 4.0 * Clearance(), 0.5 * outside});
    const double speed = kFlySpeed * height * (input.fast ? kFast : 1.0);
    const Vector3 move = camera_.Forward() * input.forward + camera_.Right() * input.right +
                         Vector3{0.0, static_cast<double>(input.up), 0.0};
    MoveTo(position_ + Normalised(move) * (speed * seconds), kFlyReach);
    Apply();
}

void CameraController::ShowAll(double azimuth, double tilt)
{
    azimuth_ = Wrapped(azimuth);
    tilt_ = std::clamp(tilt, kLowestTilt, 90.0);
    Apply();
    FramePoints(camera_, outline_, kMargin);
    position_ = camera_.Position();
    KeepAboveGround();
    Apply();
    showsAll_ = true;
}

void CameraController::NorthUp()
{
    TurnAround(Focus(), 0.0, tilt_);
}

void CameraController::FromTop()
{
    TurnAround(Focus(), azimuth_, 90.0);
}

void CameraController::GoTo(double x, double z)
{
    const Vector3 focus = Focus();
    const Vector3 target{x, ground_.HeightAt(x, z), z};
    MoveHolding(position_ + (target - focus), {width_ * 0.5, height_ * 0.5}, target);
}

void CameraController::Place(const Vector3& position, double azimuth, double tilt)
{
    if (!std::isfinite(Length(position)) || !std::isfinite(azimuth) || !std::isfinite(tilt))
        return;
    showsAll_ = false;
    position_ = position;
    azimuth_ = Wrapped(azimuth);
    tilt_ = std::clamp(tilt, kLowestTilt, 90.0);
    KeepAboveGround();
    Apply();
}

void CameraController::TurnAround(const Vector3& pivot, double azimuth, double tilt)
{
    const double distance = Length(pivot - position_);
    azimuth_ = azimuth;
    tilt_ = tilt;
    MoveHolding(pivot - DirectionOf(azimuth_, tilt_) * distance, {width_ * 0.5, height_ * 0.5}, pivot);
}

/// Goes to a place, or as near to it as the ground and the reach allow. \param reach lengths of the terrain around it;
/// a camera that is farther away may stay there
void CameraController::MoveTo(const Vector3& place, double reach)
{
    showsAll_ = false;
    const auto within = [room = reach * Size()](double to, double from, double extent) {
        return std::clamp(to, std::min(-room, from), std::max(extent + room, from));
    };
    position_ = {within(place.x, position_.x, frame_.Width()), within(place.y, position_.y, frame_.Relief()),
                 within(place.z, position_.z, frame_.Depth())};
    KeepAboveGround();
}

/// Goes to a place from which a target stands at a point of the picture. Where the camera can't get there, it turns to
/// have it there all the same.
void CameraController::MoveHolding(const Vector3& place, const PicturePoint& point, const Vector3& target)
{
    MoveTo(place, kReach);
    if (Length(position_ - place) > 0.0)
        AimAt(point, target);
    Apply();
}

/// The horizon stays level, so a direction of view brings the target to the point, or there is none.
void CameraController::AimAt(const PicturePoint& point, const Vector3& target)
{
    const double x = (2.0 * point.x / width_ - 1.0) * camera_.HalfWidth();
    const double y = (1.0 - 2.0 * point.y / height_) * camera_.HalfHeight();
    const Vector3 direction = Normalised(target - position_);
    // Upright: y cos(tilt) - sin(tilt) = rise.
    const double rise = direction.y * std::sqrt(x * x + y * y + 1.0);
    const double share = rise / std::hypot(1.0, y);
    if (Length(direction) == 0.0 || std::fabs(share) > 1.0)
        return;
    const double tilt = std::acos(share) - std::atan2(1.0, y);
    if (Degrees(tilt) < kLowestTilt || Degrees(tilt) > 90.0)
        return;
    tilt_ = Degrees(tilt);
    const double across = std::atan2(x, std::cos(tilt) + y * std::sin(tilt));
    azimuth_ = Wrapped(Degrees(std::atan2(direction.x, -direction.z) - across));
}

Vector3 CameraController::DirectionOf(double azimuth, double tilt) const
{
    const double level = std::cos(Radians(tilt));
    return {level * std::sin(Radians(azimuth)), -std::sin(Radians(tilt)), -level * std::cos(Radians(azimuth))};
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
    const double floor = ground_.Contains(position_.x, position_.z) ? ground_.HeightAt(position_.x, position_.z) : 0.0;
    position_.y = std::max(position_.y, floor + Clearance());
}

/// "Up" follows the azimuth, so that it has a meaning when the camera looks straight down too.
void CameraController::Apply()
{
    camera_.SetViewport(width_, height_);
    camera_.SetUp(DirectionOf(azimuth_, tilt_ - 90.0));
    camera_.SetDirection(DirectionOf(azimuth_, tilt_));
    camera_.SetPosition(position_);
    SetLens();
    if (moved_)
        moved_();
}

void CameraController::SetLens()
{
    // The angle holds across the longer side of the picture.
    const double half = std::tan(Radians(fieldOfView_) * 0.5);
    const double across = width_ >= height_ ? half : half * width_ / height_;
    const double degrees = Degrees(2.0 * std::atan(across));
    const DepthRange depth = DepthOf(camera_, outline_);
    const double farthest = std::max(depth.farthest, Size() * 0.01) * 1.01;
    const double nearest = std::max(std::min(depth.nearest * 0.9, HeightAboveGround() * 0.5), farthest / 30000.0);
    camera_.SetLens(degrees, std::max(nearest, Clearance() * 0.25), farthest);
}

}  // namespace tessara
