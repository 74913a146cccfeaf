#include "app/viewer/terrain/ground_model.h"

#include "host/elevation/elevation_data.h"
#include "host/ground_frame.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessara {

/// A ray in columns, rows and metres of the file, for the distances from `from` to `to` along it.
struct GroundModel::Ray {
    Vector3 origin;
    Vector3 step;
    double from;
    double to;

    Vector3 At(double distance) const { return origin + step * distance; }
};

namespace {

/// Takes off a ray what lies outside of an interval along one axis. \return false when nothing is left
bool ClipAxis(double origin, double step, double low, double high, double& from, double& to)
{
    if (step == 0.0)
        return origin >= low && origin <= high;
    const double a = (low - origin) / step;
    const double b = (high - origin) / step;
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
    return from <= to;
}

/// The least root of a t^2 + b t + c that is positive. \return nothing where there is none
std::optional<double> LeastRoot(double a, double b, double c)
{
    const double discriminant = b * b - 4.0 * a * c;
    if (discriminant < 0.0)
        return std::nullopt;
    // Nothing is subtracted here that could cancel out, so small factors of t^2 do no harm.
    const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
    std::optional<double> least;
    for (const double root : {a == 0.0 ? 0.0 : q / a, q == 0.0 ? 0.0 : c / q}) {
        if (root > 0.0 && (!least || root < *least))
            least = root;
    }
    return least;
}

}  // namespace

double GroundModel::Cell(int column, int row) const
{
    const auto x = static_cast<std::size_t>(std::clamp(column, 0, data_.width - 1));
    const auto y = static_cast<std::size_t>(std::clamp(row, 0, data_.height - 1));
    return static_cast<double>(data_.metres[x + y * static_cast<std::size_t>(data_.width)]);
}

double GroundModel::Metres(double column, double row) const
{
    const double x = std::clamp(column, 0.0, data_.width - 1.0);
    const double y = std::clamp(row, 0.0, data_.height - 1.0);
    const int left = static_cast<int>(x);
    const int top = static_cast<int>(y);
    const double u = x - left;
    const double v = y - top;
    const double north = Cell(left, top) * (1.0 - u) + Cell(left + 1, top) * u;
    const double south = Cell(left, top + 1) * (1.0 - u) + Cell(left + 1, top + 1) * u;
    return north * (1.0 - v) + south * v;
}

double GroundModel::MetresAt(double x, double z) const
{
    return Metres(x / data_.spacingX, z / data_.spacingY);
}

double GroundModel::HeightAt(double x, double z) const
{
    return ground_.FromMap(0.0, 0.0, MetresAt(x, z)).y;
}

double GroundModel::SlopeAt(double x, double z) const
{
    // At an edge there is ground on one side only.
    const auto slope = [](double at, double reach, double extent, const auto& metres) {
        const double low = std::clamp(at - reach, 0.0, extent);
        const double high = std::clamp(at + reach, 0.0, extent);
        return high > low ? (metres(high) - metres(low)) / (high - low) : 0.0;
    };
    const double east = slope(x, data_.spacingX, ground_.Width(), [&](double at) { return MetresAt(at, z); });
    const double south = slope(z, data_.spacingY, ground_.Depth(), [&](double at) { return MetresAt(x, at); });
    return std::atan(std::hypot(east, south)) * 180.0 / std::numbers::pi;
}

bool GroundModel::Contains(double x, double z) const
{
    const double halfX = 0.5 * data_.spacingX;
    const double halfZ = 0.5 * data_.spacingY;
    return x >= -halfX && z >= -halfZ && x <= ground_.Width() + halfX && z <= ground_.Depth() + halfZ;
}

bool GroundModel::Clip(Ray& ray) const
{
    return ClipAxis(ray.origin.x, ray.step.x, -0.5, data_.width - 0.5, ray.from, ray.to) &&
           ClipAxis(ray.origin.z, ray.step.z, -0.5, data_.height - 0.5, ray.from, ray.to) &&
           ClipAxis(ray.origin.y, ray.step.y, static_cast<double>(data_.minimum) - 1.0,
                    static_cast<double>(data_.maximum) + 1.0, ray.from, ray.to);
}

/// The height within a cell is bilinear, so along a ray it is a parabola. Counted from where the ray enters the cell,
/// so that a far origin costs no precision.
std::optional<double> GroundModel::MeetInCell(const Ray& ray, int column, int row, double from, double to) const
{
    const double h00 = Cell(column, row);
    const double h10 = Cell(column + 1, row);
    const double h01 = Cell(column, row + 1);
    const double h11 = Cell(column + 1, row + 1);
    const Vector3 start = ray.At(from);
    // Beyond the outermost points the ground is level across the edge.
    const bool pastX = column < 0 || column >= data_.width - 1;
    const bool pastZ = row < 0 || row >= data_.height - 1;
    const double u = pastX ? 0.0 : start.x - column;
    const double v = pastZ ? 0.0 : start.z - row;
    const double du = pastX ? 0.0 : ray.step.x;
    const double dv = pastZ ? 0.0 : ray.step.z;
    const double hu = h10 - h00;
    const double hv = h01 - h00;
    const double huv = h11 - h10 - h01 + h00;
    const double a = -huv * du * dv;
    const double b = ray.step.y - hu * du - hv * dv - huv * (u * dv + v * du);
    const double c = start.y - h00 - hu * u - hv * v - huv * u * v;
    if (c <= 0.0)
        return from;  // it met the ground between two cells, but for rounding
    const double length = to - from;
    const auto root = LeastRoot(a, b, c);
    if (root && *root <= length)
        return from + *root;
    return (a * length + b) * length + c < 0.0 ? std::optional<double>(to) : std::nullopt;
}

/// Looks at one cell after the other along the ray.
std::optional<double> GroundModel::Walk(const Ray& ray) const
{
    const Vector3 start = ray.At(ray.from);
    int column = static_cast<int>(std::floor(start.x));
    int row = static_cast<int>(std::floor(start.z));
    const int stepX = ray.step.x > 0.0 ? 1 : -1;
    const int stepZ = ray.step.z > 0.0 ? 1 : -1;
    const auto border = [](double position, double step, int cell) {
        return step == 0.0 ? 1e30 : ((step > 0.0 ? cell + 1 : cell) - position) / step;
    };
    double from = ray.from;
    while (true) {
        const double nextX = border(ray.origin.x, ray.step.x, column);
        const double nextZ = border(ray.origin.z, ray.step.z, row);
        const double to = std::clamp(std::min(nextX, nextZ), from, ray.to);
        if (const auto met = MeetInCell(ray, column, row, from, to))
            return met;
        if (to >= ray.to)
            return std::nullopt;
        (nextX < nextZ ? column : row) += nextX < nextZ ? stepX : stepZ;
        from = to;
    }
}

std::optional<Vector3> GroundModel::Pick(const Vector3& origin, const Vector3& direction) const
{
    const double lift = ground_.FromMap(0.0, 0.0, 1.0).y - ground_.FromMap(0.0, 0.0, 0.0).y;
    const double base = ground_.FromMap(0.0, 0.0, 0.0).y;
    const Vector3 along = Normalised(direction);
    if (lift <= 0.0 || Length(along) == 0.0)
        return std::nullopt;
    Ray ray{{origin.x / data_.spacingX, (origin.y - base) / lift, origin.z / data_.spacingY},
            {along.x / data_.spacingX, along.y / lift, along.z / data_.spacingY},
            0.0,
            1e30};
    if (!Clip(ray))
        return std::nullopt;
    // Where it comes in through a side of the terrain it sees earth, and no ground from below.
    const Vector3 start = ray.At(ray.from);
    if (start.y < Metres(start.x, start.z))
        return std::nullopt;
    const auto met = Walk(ray);
    return met ? std::optional<Vector3>(origin + along * *met) : std::nullopt;
}

}  // namespace tessara
