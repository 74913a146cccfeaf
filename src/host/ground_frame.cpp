#include "host/ground_frame.h"

#include "host/elevation/elevation_data.h"

namespace tessara {

GroundFrame::GroundFrame(const ElevationData& data, double exaggeration)
    : GroundFrame(data, exaggeration, {data.minimum, data.maximum})
{
}

GroundFrame::GroundFrame(const ElevationData& data, double exaggeration, const std::pair<float, float>& range)
    : columns_(data.width),
      rows_(data.height),
      spacingX_(data.spacingX),
      spacingY_(data.spacingY),
      minimum_(static_cast<double>(range.first)),
      range_(static_cast<double>(range.second) - static_cast<double>(range.first)),
      exaggeration_(exaggeration)
{
}

Vector3 GroundFrame::FromMap(double east, double north, double height) const noexcept
{
    return {east, (height - minimum_) * exaggeration_, Depth() - north};
}

Vector3 GroundFrame::ToMap(const Vector3& point) const noexcept
{
    return {point.x, Depth() - point.z, minimum_ + point.y / exaggeration_};
}

Vector3 GroundFrame::FromGrid(int column, int row, double height) const noexcept
{
    return {column * spacingX_, (height - minimum_) * exaggeration_, row * spacingY_};
}

}  // namespace tessara
