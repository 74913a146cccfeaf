#include "terrain/terrain_frustum.h"

#include "platform/gl/gl.h"

#include <cmath>

namespace {

constexpr float kPi = 3.1415927f;

float Distance(const FrustumPlane& plane, float x, float y, float z)
{
    return plane.a * x + plane.b * y + plane.c * z - plane.d;
}

float SphereInside(const FrustumPlane* planes, int count, float x, float y, float z, float radius)
{
    for (int i = 0; i < count; ++i) {
        if (Distance(planes[i], x, y, z) + radius < 0.0f)
            return 0.0f;
    }
    return 1.0f;
}

float Aspect(std::int32_t width, std::int32_t height)
{
    return static_cast<float>(height) / static_cast<float>(width);
}

double HalfAngle(float fieldOfView)
{
    return fieldOfView * (kPi / 180.0) / 2.0;
}

}  // namespace

std::int32_t TerrainFrustum::BoxTest(const float* low, const float* high) const
{
    std::uint32_t any = 0;
    std::uint32_t all = ~0u;
    // Bit i of a corner's code says that it is outside plane i. Taken plane by plane, each partial product is worked
    // out once; every corner's sum still runs in the order a x + b y + c z - d.
    std::uint32_t codes[8] = {};
    for (std::uint32_t i = 0; i < 6; ++i) {
        const FrustumPlane& plane = WorldPlanes[i];
        const float x[2] = {plane.a * low[0], plane.a * high[0]};
        const float y[2] = {plane.b * low[1], plane.b * high[1]};
        const float z[2] = {plane.c * low[2], plane.c * high[2]};
        for (std::uint32_t corner = 0; corner < 8; ++corner) {
            const float distance = x[corner & 1] + y[corner >> 1 & 1] + z[corner >> 2] - plane.d;
            codes[corner] |= static_cast<std::uint32_t>(distance < 0.0f) << i;
        }
    }
    for (const std::uint32_t code : codes) {
        any |= code;
        all &= code;
    }
    if (any == 0)
        return Inside;
    return all != 0 ? Outside : Crossing;
}

float TerrainFrustum::SpherePasses(float x, float y, float z, float radius) const
{
    return SphereInside(WorldPlanes, 6, x, y, z, radius);
}

float TerrainFrustum::SpherePassesSides(float x, float y, float z, float radius) const
{
    return SphereInside(WorldPlanes, 4, x, y, z, radius);
}

void TerrainFrustum::BuildViewPlanes(std::int32_t width, std::int32_t height)
{
    MultiplyProjection(HalfAngle(FieldOfView), Aspect(width, height));
    SetViewPlanes(width, height);
}

void TerrainFrustum::SetViewPlanes(std::int32_t width, std::int32_t height)
{
    const double across = HalfAngle(FieldOfView);
    const double upright = std::atan(std::tan(across) * static_cast<double>(Aspect(width, height)));
    const auto cosAcross = static_cast<float>(std::cos(across));
    const auto sinAcross = static_cast<float>(std::sin(across));
    const auto cosUpright = static_cast<float>(std::cos(upright));
    const auto sinUpright = static_cast<float>(std::sin(upright));
    ViewPlanes[0] = {0.0f, 0.0f, 1.0f, Near};
    ViewPlanes[1] = {0.0f, 0.0f, -1.0f, -Far};
    ViewPlanes[2] = {-cosAcross, 0.0f, sinAcross, 0.0f};
    ViewPlanes[3] = {cosAcross, 0.0f, sinAcross, 0.0f};
    ViewPlanes[4] = {0.0f, -cosUpright, sinUpright, 0.0f};
    ViewPlanes[5] = {0.0f, cosUpright, sinUpright, 0.0f};
}

void TerrainFrustum::ApplyProjection() const
{
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    MultiplyProjection(HalfAngle(FieldOfView), Aspect(viewport[2], viewport[3]));
}

void TerrainFrustum::MultiplyProjection(double halfAngle, float aspect) const
{
    const double cotangent = 1.0 / std::tan(halfAngle);
    float matrix[16] = {};
    matrix[0] = static_cast<float>(-cotangent);
    matrix[5] = static_cast<float>(cotangent / static_cast<double>(aspect));
    matrix[10] = (Far + Near) / (Far - Near);
    matrix[11] = 1.0f;
    matrix[14] = (-2.0f * Far * Near) / (Far - Near);
    glMultMatrixf(matrix);
}

bool TerrainFrustum::GetPlane(FrustumPlane* plane, std::int32_t index) const
{
    if (index < 0 || index > 5)
        return false;
    *plane = WorldPlanes[index];
    return true;
}

void TerrainFrustum::GetPlaneTables(FrustumPlane** viewPlanes, FrustumPlane** worldPlanes)
{
    *viewPlanes = ViewPlanes;
    *worldPlanes = WorldPlanes;
}
