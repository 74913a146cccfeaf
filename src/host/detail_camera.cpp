#include "host/detail_camera.h"

#include "host/camera.h"
#include "host/ground_search.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

/// A surface weighs the error of each vertex that it leaves out by itself; the mesh is off by what several levels of
/// them add up to. On all ground that was measured sums stay below this many times the greatest error of one.
constexpr double kLevelsAddUp = 2.0;

/// The factor goes in steps, as powers of two: with another factor a surface goes through its whole tree.
constexpr double kStepsPerOctave = 16.0;

double StepAbove(double value)
{
    return std::exp2(std::ceil(std::log2(value) * kStepsPerOctave) / kStepsPerOctave);
}

}  // namespace

void DetailCamera::Follow(const Camera& camera, const DrawnGround& ground)
{
    const Vector3& units = camera.DrawUnits();
    frustum_ = camera.Frustum();
    const GroundReach reach = SearchGround(camera, frustum_, ground, units);
    const double least = std::min(units.x, units.z);
    // In cells for each unit of true space. Straight below the eye no axis but y says how far the ground is.
    const double ratio = std::min(StepAbove(std::max(reach.cellsPerUnit * least, 1e-3)), 1.0) / least;
    factor_ = kLevelsAddUp * ratio * units.y;
    position_[0] = static_cast<float>(camera.Position().x / units.x - ground.translation.x);
    position_[1] = static_cast<float>(reach.nearest * ratio);
    position_[2] = static_cast<float>(camera.Position().z / units.z - ground.translation.z);
}

void DetailCamera::Join(const DetailCamera& other)
{
    std::copy_n(other.position_, 3, position_);
    factor_ = other.factor_;
    frustum_ = other.frustum_;
}

HRESULT DetailCamera::GetPosition(float* position)
{
    if (!position)
        return E_POINTER;
    std::copy_n(position_, 3, position);
    return S_OK;
}

HRESULT DetailCamera::GetFrustum(TerrainFrustum** frustum)
{
    if (!frustum)
        return E_POINTER;
    *frustum = &frustum_;
    return S_OK;
}

void DetailCamera::SetPlanes(const FrustumPlane& plane)
{
    std::fill(std::begin(frustum_.WorldPlanes), std::end(frustum_.WorldPlanes), plane);
}

}  // namespace tessara
