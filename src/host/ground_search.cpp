#include "host/ground_search.h"

#include "host/camera.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

/// How much longer than its distance a block may be in a search, as a share, before its parts are looked at.
constexpr double kCoarse = 0.03;

/// The distances from a point to an interval, along one axis.
struct Span {
    double least;
    double most;

    static Span From(double at, double low, double high)
    {
        return {std::max({low - at, at - high, 0.0}), std::max(std::fabs(low - at), std::fabs(high - at))};
    }
};

double Square(double value)
{
    return value * value;
}

class GroundSearch {
public:
    GroundSearch(const Vector3& eye, const Vector3& units, const DrawnGround& ground, const TerrainFrustum* frustum)
        : eye_(eye), units_(units), ground_(ground), frustum_(frustum)
    {
        Visit(ground.heights.Levels() - 1, 0, 0, frustum == nullptr);
    }

    bool FoundAny() const { return nearest_ < std::numeric_limits<double>::max(); }
    GroundReach Reach() const { return {nearest_, cellsPerUnit_}; }

private:
    /// A block, in draw space.
    struct Box {
        float low[3];
        float high[3];
    };

    Box BoxOf(int level, int column, int row) const
    {
        const HeightPyramid::Range range = ground_.heights.At(level, column, row);
        const auto place = [](double value) { return static_cast<float>(value); };
        const auto height = [&](float elevation) {
            return place(static_cast<double>(elevation) * ground_.elevationScale + ground_.translation.y);
        };
        const int right = std::min((column + 1) << level, ground_.heights.CellColumns());
        const int bottom = std::min((row + 1) << level, ground_.heights.CellRows());
        const double x = ground_.translation.x + ground_.heights.Border();
        const double z = ground_.translation.z + ground_.heights.Border();
        return {{place((column << level) + x), height(range.low), place((row << level) + z)},
                {place(right + x), height(range.high), place(bottom + z)}};
    }

    void Visit(int level, int column, int row, bool isInside)
    {
        const Box box = BoxOf(level, column, row);
        if (!isInside) {
            const std::int32_t seen = frustum_->BoxTest(box.low, box.high);
            if (seen == TerrainFrustum::Outside)
                return;
            isInside = seen == TerrainFrustum::Inside;
        }
        const auto span = [&](int axis, double eye, double unit) {
            return Span::From(eye, static_cast<double>(box.low[axis]) * unit,
                              static_cast<double>(box.high[axis]) * unit);
        };
        const Span x = span(0, eye_.x, units_.x);
        const Span y = span(1, eye_.y, units_.y);
        const Span z = span(2, eye_.z, units_.z);
        const double nearest = std::sqrt(Square(x.least) + Square(y.least) + Square(z.least));
        const double ratio = std::max(Ratio(x, y, z, units_.x), Ratio(z, y, x, units_.z));
        if (nearest >= nearest_ && ratio <= cellsPerUnit_)
            return;
        const double size = (x.most - x.least) + (y.most - y.least) + (z.most - z.least);
        if (level == 0 || size <= kCoarse * nearest) {
            nearest_ = std::min(nearest_, nearest);
            cellsPerUnit_ = std::max(cellsPerUnit_, ratio);
            return;
        }
        VisitParts(level - 1, 2 * column, 2 * row, box, isInside);
    }

    /// From the part that is nearest to the eye, since that one spares the others the most.
    void VisitParts(int level, int column, int row, const Box& box, bool isInside)
    {
        const int east = eye_.x > (static_cast<double>(box.low[0]) + static_cast<double>(box.high[0])) * 0.5 * units_.x;
        const int south =
            eye_.z > (static_cast<double>(box.low[2]) + static_cast<double>(box.high[2])) * 0.5 * units_.z;
        for (const int dy : {south, 1 - south}) {
            for (const int dx : {east, 1 - east}) {
                if ((column + dx) << level < ground_.heights.CellColumns() &&
                    (row + dy) << level < ground_.heights.CellRows())
                    Visit(level, column + dx, row + dy, isInside);
            }
        }
    }

    /// The most cells along an axis for each unit of distance: where the axis is longest and the others are shortest.
    static double Ratio(const Span& along, const Span& b, const Span& c, double unit)
    {
        if (along.most == 0.0)
            return 0.0;
        return along.most / std::sqrt(Square(along.most) + Square(b.least) + Square(c.least)) / unit;
    }

    Vector3 eye_;
    Vector3 units_;
    const DrawnGround& ground_;
    const TerrainFrustum* frustum_;
    double nearest_ = std::numeric_limits<double>::max();
    double cellsPerUnit_ = 0.0;
};

}  // namespace

GroundReach SearchGround(const Camera& camera, const TerrainFrustum& frustum, const DrawnGround& ground,
                         const Vector3& drawUnits)
{
    const GroundSearch seen(camera.Position(), drawUnits, ground, &frustum);
    if (seen.FoundAny())
        return seen.Reach();
    return GroundSearch(camera.Position(), drawUnits, ground, nullptr).Reach();
}

}  // namespace tessara
