#pragma once

#include "../platform/com/unknown.h"

class TerrainFrustum;

/// A camera, as Draw3D and GetRenderedPolygons read it. They take no reference on it.
struct ICameraObject : IUnknown {
    /// Writes the position that the level of detail measures distances from, as it comes: x and z in tree units,
    /// without the surface's translation; y against normalised elevations, so that it counts as the least distance of
    /// all. For errors that stay below some pixels it is the distance from the eye to the nearest ground in the
    /// picture, in cells; the host library's DetailCamera answers that.
    virtual HRESULT STDMETHODCALLTYPE GetPosition(float* position) = 0;

    /// Gives the camera's frustum, whose WorldPlanes stand in draw space: tree units with the surface's
    /// translation added and heights multiplied by its elevation scale. The camera keeps it; it
    /// must stay valid and unchanged during the call in which the surface asked for it.
    virtual HRESULT STDMETHODCALLTYPE GetFrustum(TerrainFrustum** frustum) = 0;

protected:
    ~ICameraObject() = default;
};

template <>
inline constexpr GUID InterfaceId<ICameraObject> = {
    0x3B0C5A52, 0x7C0E, 0x4A8F, {0x9D, 0x12, 0x5E, 0x84, 0x61, 0x2F, 0xA0, 0x01}};
