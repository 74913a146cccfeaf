#include "app/viewer/picture/map_view.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessara {

MapView::MapView(int width, int height, double across, double down, int margin) : across_(across), down_(down)
{
    const double roomX = std::max(width - 2 * margin, 1);
    const double roomY = std::max(height - 2 * margin, 1);
    scale_ = std::max({across / roomX, down / roomY, 1e-9});
    left_ = (width - across / scale_) * 0.5;
    top_ = (height - down / scale_) * 0.5;
}

PicturePoint MapView::ToPane(double x, double z) const noexcept
{
    return {left_ + x / scale_, top_ + z / scale_};
}

Vector3 MapView::ToGround(const PicturePoint& point) const noexcept
{
    return {(point.x - left_) * scale_, 0.0, (point.y - top_) * scale_};
}

std::array<double, 4> MapView::Frame() const noexcept
{
    return {left_, top_, left_ + across_ / scale_, top_ + down_ / scale_};
}

std::array<Vector3, 3> ViewCone(const CameraController& camera)
{
    const Vector3 eye = camera.Position();
    const Vector3 focus = camera.Focus();
    const double reach = 1.5 * std::max(std::hypot(focus.x - eye.x, focus.z - eye.z), 0.2 * Length(focus - eye));
    const double half = camera.FieldOfView() * std::numbers::pi / 360.0;
    const double compass = camera.Azimuth() * std::numbers::pi / 180.0;
    const auto corner = [&](double angle) {
        return Vector3{eye.x + reach * std::sin(compass + angle), 0.0, eye.z - reach * std::cos(compass + angle)};
    };
    return {Vector3{eye.x, 0.0, eye.z}, corner(-half), corner(half)};
}

}  // namespace tessara
