#pragma once

#include "platform/com/com_object.h"
#include "services/camera_object.h"
#include "terrain/terrain_frustum.h"

namespace tessara {

/// For whom a terrain is adapted and culled, which needn't be the camera that sees the picture.
class DetailCamera final : public ComObject<ICameraObject> {
public:
    /// Stands where another camera stands now, and sees what that one sees.
    void Follow(ICameraObject& camera)
    {
        camera.GetPosition(position_);
        TerrainFrustum* frustum = nullptr;
        camera.GetFrustum(&frustum);
        if (frustum)
            frustum_ = *frustum;
    }

    /// Sees everything from here on.
    void SeeAll() { SetPlanes({0.0f, 0.0f, 0.0f, 0.0f}); }

    /// Sees nothing from here on: a frame for it adapts the terrain, and draws no triangle.
    void SeeNothing() { SetPlanes({0.0f, 0.0f, 0.0f, 1.0f}); }

    const float* Position() const noexcept { return position_; }

    HRESULT STDMETHODCALLTYPE GetPosition(float* position) override
    {
        if (!position)
            return E_POINTER;
        for (int i = 0; i < 3; ++i)
            position[i] = position_[i];
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetFrustum(TerrainFrustum** frustum) override
    {
        if (!frustum)
            return E_POINTER;
        *frustum = &frustum_;
        return S_OK;
    }

protected:
    ~DetailCamera() override = default;

private:
    void SetPlanes(const FrustumPlane& plane)
    {
        for (FrustumPlane& each : frustum_.WorldPlanes)
            each = plane;
    }

    float position_[3] = {};
    TerrainFrustum frustum_;
};

}  // namespace tessara
