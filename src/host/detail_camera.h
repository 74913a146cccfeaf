#pragma once

#include "../platform/com/com_object.h"
#include "../services/camera_object.h"
#include "../terrain/terrain_frustum.h"
#include "height_pyramid.h"
#include "vector3.h"

namespace tessara {

class Camera;

/// The ground that a surface draws.
struct DrawnGround {
    const HeightPyramid& heights;           ///< over the grid of the surface's matrix
    double elevationScale = 1.0;            ///< as ITessara::SetElevationScale got it
    Vector3 translation = {0.0, 0.0, 0.0};  ///< as ITessara::SetTranslation3D got it
};

/// For whom a terrain is adapted and culled: what Draw3D and GetRenderedPolygons get in place of the camera that sees
/// the picture, so that the level of detail keeps below an error in pixels.
///
/// A surface measures distances in its own way: along the axis on which they are longest, x and z in cells, y from the
/// position to elevations that it has not scaled. This camera's position lies over the eye, in tree units, and its y is
/// the distance to the nearest ground in the picture; Factor makes up for what remains.
class DetailCamera final : public ComObject<ICameraObject> {
public:
    /// Stands for another camera as it is now, until it is told otherwise.
    void Follow(const Camera& camera, const DrawnGround& ground);

    /// Stands where another one stands now, and sees what that one sees.
    void Join(const DetailCamera& other);

    /// What SetLOD takes for a level of detail of 1: for errors below some pixels, the factor times the picture's width
    /// in pixels, over twice the tangent of half its field of view, over the pixels. It changes with each Follow.
    double Factor() const noexcept { return factor_; }

    /// Sees everything from here on.
    void SeeAll() { SetPlanes({0.0f, 0.0f, 0.0f, 0.0f}); }

    /// Sees nothing from here on: a frame for it adapts the terrain, and draws no triangle.
    void SeeNothing() { SetPlanes({0.0f, 0.0f, 0.0f, 1.0f}); }

    HRESULT STDMETHODCALLTYPE GetPosition(float* position) override;
    HRESULT STDMETHODCALLTYPE GetFrustum(TerrainFrustum** frustum) override;

protected:
    ~DetailCamera() override = default;

private:
    void SetPlanes(const FrustumPlane& plane);

    float position_[3] = {};
    double factor_ = 1.0;
    TerrainFrustum frustum_;
};

}  // namespace tessara
