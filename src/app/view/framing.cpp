#include "app/view/framing.h"

#include "app/view/height_span.h"
#include "host/camera.h"
#include "host/elevation/elevation_data.h"
#include "host/ground_frame.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tessara {

namespace {

/// Points along an edge of the grid that are enough to outline a terrain.
constexpr int kOutlinePoints = 512;

/// How near the camera may come so that an axis of the picture, right or up, shows all points: the least of
/// depth + |offset| / slope decides for each edge, and both edges meet where the camera stands.
struct Axis {
    double low = std::numeric_limits<double>::max();   // least of slope x depth + offset
    double high = std::numeric_limits<double>::max();  // least of slope x depth - offset

    void Add(double depth, double offset, double slope)
    {
        low = std::min(low, slope * depth + offset);
        high = std::min(high, slope * depth - offset);
    }
    double Depth(double slope) const { return (low + high) / (2.0 * slope); }
    double Offset() const { return (low - high) / 2.0; }
};

}  // namespace

double SizeOf(const HeightSpan& span, const GroundFrame& ground)
{
    const double relief =
        (static_cast<double>(span.highest) - static_cast<double>(span.lowest)) * ground.Exaggeration();
    return std::max({ground.Width(), ground.Depth(), relief, ground.DrawUnits().x});
}

double BaseOf(const HeightSpan& span, const GroundFrame& ground)
{
    constexpr double kBelowFloor = 0.008;
    return ground.FromMap(0.0, 0.0, static_cast<double>(span.floor)).y - kBelowFloor * SizeOf(span, ground);
}

Outline OutlineOf(const ElevationData& data, const HeightSpan& span, const GroundFrame& ground)
{
    std::vector<Vector3> points;
    const auto next = [](int index, int count) {
        const int step = std::max(count / kOutlinePoints, 1);
        return index == count - 1 ? count : std::min(index + step, count - 1);
    };
    for (int row = 0; row < data.height; row = next(row, data.height)) {
        const float* metres = data.metres.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(data.width);
        for (int column = 0; column < data.width; column = next(column, data.width))
            points.push_back(ground.FromGrid(column, row, static_cast<double>(metres[column])));
    }
    const Vector3 half = ground.DrawUnits() * 0.5;
    for (const double x : {-half.x, ground.Width() + half.x}) {
        for (const double z : {-half.z, ground.Depth() + half.z})
            points.push_back({x, BaseOf(span, ground), z});
    }
    const double low = static_cast<double>(span.lowest);
    const double third = low + (static_cast<double>(span.highest) - low) / 3.0;
    return {std::move(points), ground.FromMap(ground.Width() / 2.0, ground.Depth() / 2.0, third), SizeOf(span, ground)};
}

void FramePoints(Camera& camera, const std::vector<Vector3>& points, double margin)
{
    const double slopeX = camera.HalfWidth() * (1.0 - 2.0 * margin);
    const double slopeY = camera.HalfHeight() * (1.0 - 2.0 * margin);
    Axis across;
    Axis upright;
    for (const Vector3& point : points) {
        const double depth = Dot(point, camera.Forward());
        across.Add(depth, Dot(point, camera.Right()), slopeX);
        upright.Add(depth, Dot(point, camera.Up()), slopeY);
    }
    const double depth = std::min(across.Depth(slopeX), upright.Depth(slopeY));
    camera.SetPosition(camera.Right() * across.Offset() + camera.Up() * upright.Offset() + camera.Forward() * depth);
}

DepthRange DepthOf(const Camera& camera, const std::vector<Vector3>& points)
{
    DepthRange range{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (const Vector3& point : points) {
        const double depth = Dot(point - camera.Position(), camera.Forward());
        range.nearest = std::min(range.nearest, depth);
        range.farthest = std::max(range.farthest, depth);
    }
    return range;
}

}  // namespace tessara
