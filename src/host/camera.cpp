#include "host/camera.h"

#include "platform/gl/gl.h"

#include <cmath>
#include <numbers>

namespace tessara {

namespace {

/// Directions closer to each other than this sine are taken as parallel.
constexpr double kParallel = 1e-6;

Vector3 Divide(const Vector3& a, const Vector3& by)
{
    return {a.x / by.x, a.y / by.y, a.z / by.z};
}

}  // namespace

Camera::Camera()
{
    Orient();
}

void Camera::SetDrawUnits(const Vector3& scale)
{
    drawUnits_ = scale;
    PlaceFrustum();
}

void Camera::SetPosition(const Vector3& position)
{
    position_ = position;
    PlaceFrustum();
}

void Camera::SetDirection(const Vector3& direction)
{
    direction_ = direction;
    Orient();
}

void Camera::LookAt(const Vector3& target)
{
    SetDirection(target - position_);
}

void Camera::SetUp(const Vector3& up)
{
    up_ = up;
    Orient();
}

void Camera::SetLens(double fieldOfView, double nearDistance, double farDistance)
{
    frustum_.FieldOfView = static_cast<float>(fieldOfView);
    frustum_.Near = static_cast<float>(nearDistance);
    frustum_.Far = static_cast<float>(farDistance);
    PlaceFrustum();
}

void Camera::SetViewport(std::int32_t width, std::int32_t height)
{
    width_ = width;
    height_ = height;
    PlaceFrustum();
}

double Camera::HalfWidth() const
{
    return std::tan(static_cast<double>(frustum_.FieldOfView) * std::numbers::pi / 360.0);
}

double Camera::HalfHeight() const
{
    return HalfWidth() * height_ / width_;
}

bool Camera::Project(const Vector3& point, double& x, double& y) const
{
    const Vector3 offset = point - position_;
    const double depth = Dot(offset, forward_);
    if (!(depth > 0.0))
        return false;
    x = (1.0 + Dot(offset, right_) / (depth * HalfWidth())) * 0.5 * width_;
    y = (1.0 - Dot(offset, trueUp_) / (depth * HalfHeight())) * 0.5 * height_;
    return true;
}

void Camera::LoadMatrices() const
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    TerrainFrustum frustum = frustum_;
    frustum.BuildViewPlanes(width_, height_);

    // View space has x to the left, y up and z forward. Its rows work on true space, so on draw space times its units.
    const Vector3 rows[3] = {right_ * -1.0, trueUp_, forward_};
    GLdouble matrix[16] = {};
    for (std::size_t row = 0; row < 3; ++row) {
        matrix[row] = rows[row].x * drawUnits_.x;
        matrix[4 + row] = rows[row].y * drawUnits_.y;
        matrix[8 + row] = rows[row].z * drawUnits_.z;
        matrix[12 + row] = -Dot(rows[row], position_);
    }
    matrix[15] = 1.0;
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(matrix);
}

HRESULT Camera::GetPosition(float* position)
{
    if (!position)
        return E_POINTER;
    const Vector3 drawn = Divide(position_, drawUnits_);
    position[0] = static_cast<float>(drawn.x);
    position[1] = static_cast<float>(drawn.y);
    position[2] = static_cast<float>(drawn.z);
    return S_OK;
}

HRESULT Camera::GetFrustum(TerrainFrustum** frustum)
{
    if (!frustum)
        return E_POINTER;
    *frustum = &frustum_;
    return S_OK;
}

void Camera::Orient()
{
    forward_ = Normalised(direction_);
    if (Length(forward_) == 0.0)
        forward_ = {0.0, 0.0, -1.0};
    right_ = Cross(forward_, Normalised(up_));
    if (Length(right_) < kParallel)
        right_ = Cross(forward_, {0.0, 0.0, forward_.y > 0.0 ? 1.0 : -1.0});  // a map: north at the top
    if (Length(right_) < kParallel)
        right_ = Cross(forward_, {0.0, 1.0, 0.0});
    right_ = Normalised(right_);
    trueUp_ = Cross(right_, forward_);
    PlaceFrustum();
}

void Camera::PlaceFrustum()
{
    frustum_.SetViewPlanes(width_, height_);
    for (int i = 0; i < 6; ++i)
        PlacePlane(frustum_.ViewPlanes[i], frustum_.WorldPlanes[i]);
}

/// A plane n p = d of view space is n' q = d' of draw space: p is the rotation of (units q - position).
void Camera::PlacePlane(const FrustumPlane& view, FrustumPlane& world) const
{
    const Vector3 normal = right_ * -static_cast<double>(view.a) + trueUp_ * static_cast<double>(view.b) +
                           forward_ * static_cast<double>(view.c);
    const double distance = static_cast<double>(view.d) + Dot(normal, position_);
    const Vector3 drawn{normal.x * drawUnits_.x, normal.y * drawUnits_.y, normal.z * drawUnits_.z};
    const double length = Length(drawn);
    world.a = static_cast<float>(drawn.x / length);
    world.b = static_cast<float>(drawn.y / length);
    world.c = static_cast<float>(drawn.z / length);
    world.d = static_cast<float>(distance / length);
}

}  // namespace tessara
