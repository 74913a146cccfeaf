#pragma once

#include <cstdint>

/// A plane: a point p is on the inner side when a p.x + b p.y + c p.z - d is at least 0. The normal (a, b, c) points
/// into the volume, d is the plane's signed distance along it.
struct FrustumPlane {
    float a;
    float b;
    float c;
    float d;
};

/// A viewing volume as six planes, in the order near, far, side towards +x, side towards -x, side towards +y, side
/// towards -y of a view space that looks along +z with x to the left and y up.
///
/// A camera owns one: it sets Near, Far and FieldOfView, calls BuildViewPlanes, and derives WorldPlanes from ViewPlanes
/// and its pose, in draw space: tree units with the terrain's translation added and heights multiplied by its elevation
/// scale. All tests read WorldPlanes.
class TerrainFrustum {
public:
    enum BoxResult : std::int32_t { Inside = 0, Crossing = 1, Outside = 2 };

    /// Tests an axis-aligned box. \param low,high opposite corners, three floats each
    /// \return Inside when all corners are inside all planes, Outside when all are outside one and the same plane, else
    ///         Crossing; a corner on a plane is inside it
    std::int32_t BoxTest(const float* low, const float* high) const;

    /// \return 1.0 unless the sphere lies wholly outside one of the planes, which gives 0.0
    float SpherePasses(float x, float y, float z, float radius) const;

    /// The same over the near and far planes and the first two sides only.
    float SpherePassesSides(float x, float y, float z, float radius) const;

    /// Writes ViewPlanes for a viewport in pixels and multiplies the current OpenGL matrix with the projection. The
    /// field of view is the angle across the viewport's width.
    void BuildViewPlanes(std::int32_t width, std::int32_t height);

    /// Writes ViewPlanes alone. Needs no OpenGL.
    void SetViewPlanes(std::int32_t width, std::int32_t height);

    /// Multiplies the current OpenGL matrix with the projection for the current viewport.
    void ApplyProjection() const;

    /// Copies a plane of WorldPlanes. \return false, with nothing written, for an index outside 0 to 5
    bool GetPlane(FrustumPlane* plane, std::int32_t index) const;

    void GetPlaneTables(FrustumPlane** viewPlanes, FrustumPlane** worldPlanes);

    FrustumPlane ViewPlanes[6] = {};
    FrustumPlane WorldPlanes[6] = {};
    float Near = 1.0f;
    float Far = 1000.0f;
    float FieldOfView = 60.0f;  ///< degrees

private:
    std::int32_t BoxTestByCorners(const float* low, const float* high) const;
    void MultiplyProjection(double halfAngle, float aspect) const;
};
