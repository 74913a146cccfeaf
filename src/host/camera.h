#pragma once

#include "../platform/com/com_object.h"
#include "../services/camera_object.h"
#include "../terrain/terrain_frustum.h"
#include "vector3.h"

#include <cstdint>

namespace tessara {

/// A perspective camera. It stands in true space: right-handed, x east, y up, z south, the same unit along each axis,
/// for instance metres from the terrain's north-west corner. The terrain is drawn in draw space, which has the same
/// axes and origin with a unit of its own along each; position and frustum go out in that space. A level of detail that
/// keeps below an error in pixels is a DetailCamera's.
///
/// All setters but the one for the lens take any values; a direction without length, or an up without an angle to it,
/// is replaced by a usable one.
class Camera final : public ComObject<ICameraObject> {
public:
    Camera();

    /// Size of one unit of draw space along its axes, in units of true space. \param scale positive
    void SetDrawUnits(const Vector3& scale);

    void SetPosition(const Vector3& position);
    void SetDirection(const Vector3& direction);

    /// Turns the camera towards a point, from the position that it has now.
    void LookAt(const Vector3& target);

    void SetUp(const Vector3& up);

    /// \param fieldOfView degrees across the width of the picture, between 0 and 180
    /// \param nearDistance,farDistance true units along the view, 0 < near < far
    void SetLens(double fieldOfView, double nearDistance, double farDistance);

    /// \param width,height of the picture in pixels, positive
    void SetViewport(std::int32_t width, std::int32_t height);

    const Vector3& Position() const noexcept { return position_; }
    const Vector3& DrawUnits() const noexcept { return drawUnits_; }

    /// What the camera sees, with its WorldPlanes in draw space.
    const TerrainFrustum& Frustum() const noexcept { return frustum_; }

    /// Axes of the view in true space, each of length 1: right x up = backward.
    const Vector3& Right() const noexcept { return right_; }
    const Vector3& Up() const noexcept { return trueUp_; }
    const Vector3& Forward() const noexcept { return forward_; }

    std::int32_t Width() const noexcept { return width_; }
    std::int32_t Height() const noexcept { return height_; }

    /// Half the extent of the picture at the distance 1, across and upright.
    double HalfWidth() const;
    double HalfHeight() const;

    /// Where a point of true space appears, in pixels from the left and the top edge of the picture.
    /// \return false, with nothing written, for a point that isn't in front of the camera
    bool Project(const Vector3& point, double& x, double& y) const;

    /// Loads the projection and the view of draw space into OpenGL's two matrices, and leaves the modelview one
    /// current.
    void LoadMatrices() const;

    HRESULT STDMETHODCALLTYPE GetPosition(float* position) override;
    HRESULT STDMETHODCALLTYPE GetFrustum(TerrainFrustum** frustum) override;

protected:
    ~Camera() override = default;

private:
    void Orient();
    void PlaceFrustum();
    void PlacePlane(const FrustumPlane& view, FrustumPlane& world) const;

    Vector3 drawUnits_{1.0, 1.0, 1.0};
    Vector3 position_;
    Vector3 direction_{0.0, 0.0, -1.0};
    Vector3 up_{0.0, 1.0, 0.0};
    Vector3 right_;
    Vector3 trueUp_;
    Vector3 forward_;
    std::int32_t width_ = 1;
    std::int32_t height_ = 1;
    TerrainFrustum frustum_;
};

}  // namespace tessara
