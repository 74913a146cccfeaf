#include "terrain/terrain_frustum.h"

#include "platform/gl/gl.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

// Rounded addition is monotone: the least and the largest of the corners' sums are those of the least and of the
// largest products. Where a sum isn't finite, no number may hide among the corners, and each is looked at.
std::int32_t TerrainFrustum::BoxTest(const float* low, const float* high) const
{
    bool crosses = false;
    for (const FrustumPlane& plane : WorldPlanes) {
        const float x[2] = {plane.a * low[0], plane.a * high[0]};
        const float y[2] = {plane.b * low[1], plane.b * high[1]};
        const float z[2] = {plane.c * low[2], plane.c * high[2]};
        const float least = std::min(x[0], x[1]) + std::min(y[0], y[1]) + std::min(z[0], z[1]) - plane.d;
        const float largest = std::max(x[0], x[1]) + std::max(y[0], y[1]) + std::max(z[0], z[1]) - plane.d;
        const float all = (x[0] + x[1]) + (y[0] + y[1]) + (z[0] + z[1]) + least + largest;
        if (!(std::fabs(all) <= std::numeric_limits<float>::max()))
            return BoxTestByCorners(low, high);
        if (largest < 0.0f)
            return Outside;
        crosses = crosses || least < 0.0f;
    }
    return crosses ? Crossing : Inside;
}

std::int32_t TerrainFrustum::BoxTestByCorners(const float* low, const float* high) const
{
    std::uint32_t any = 0;
    std::uint32_t all = ~0u;
    for (std::uint32_t corner = 0; corner < 8; ++corner) {
        const float x = corner & 1 ? high[0] : low[0];
        const float y = corner & 2 ? high[1] : low[1];
        const float z = corner & 4 ? high[2] : low[2];
        std::uint32_t code = 0;  // bit i: outside plane i
        for (std::uint32_t i = 0; i < 6; ++i)
            code |= (Distance(WorldPlanes[i], x, y, z) < 0.0f ? 1u : 0u) << i;
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
