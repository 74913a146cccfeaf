#include "app/output/ground_mesh.h"

#include "app/output/polygon_text.h"
#include "app/output/triangle_reader.h"
#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

namespace tessara {

namespace {

constexpr auto kNone = static_cast<std::uint32_t>(-1);

/// A place of the grid, by its column and row.
struct Place {
    int column = 0;
    int row = 0;
};

/// The component's vertices are places of the grid: beyond its last column and row it folds them onto those. Their
/// heights, which may be of a place that the grid doesn't have, aren't taken.
Place PlaceOf(const TriangleReader::Vertex& vertex, const ElevationData& data)
{
    return {std::clamp(static_cast<int>(std::lround(vertex[0])), 0, data.width - 1),
            std::clamp(static_cast<int>(std::lround(vertex[2])), 0, data.height - 1)};
}

/// Twice the area in plan, positive for one that is counter-clockwise with the north up.
std::int64_t Area(const Place& a, const Place& b, const Place& c)
{
    return std::int64_t{c.column - a.column} * (b.row - a.row) - std::int64_t{b.column - a.column} * (c.row - a.row);
}

class MeshBuilder {
public:
    explicit MeshBuilder(const ElevationData& data) : data_(data) {}

    void Add(const Place (&corners)[3])
    {
        if (Area(corners[0], corners[1], corners[2]) == 0)
            return;
        mesh_.triangles.push_back({PointAt(corners[0]), PointAt(corners[1]), PointAt(corners[2])});
    }

    TriangleMesh Take() { return std::move(mesh_); }

private:
    std::uint32_t PointAt(const Place& place)
    {
        const auto cell = static_cast<std::uint32_t>(place.row) * static_cast<std::uint32_t>(data_.width) +
                          static_cast<std::uint32_t>(place.column);
        const auto [entry, isNew] = known_.try_emplace(cell, static_cast<std::uint32_t>(mesh_.points.size()));
        if (isNew)
            mesh_.points.push_back({place.column * data_.spacingX, (data_.height - 1 - place.row) * data_.spacingY,
                                    static_cast<double>(data_.metres[cell])});
        return entry->second;
    }

    const ElevationData& data_;
    TriangleMesh mesh_;
    std::unordered_map<std::uint32_t, std::uint32_t> known_;
};

/// Puts walls and a floor under a surface.
class SolidBuilder {
public:
    using Border = std::vector<TriangleMesh::BorderEdge>;

    SolidBuilder(const TriangleMesh& ground, const SolidSize& size)
        : solid_(ground), below_(ground.points.size(), kNone)
    {
        double lowest = std::numeric_limits<double>::infinity();
        for (const Vector3& point : ground.points)
            lowest = std::min(lowest, point.z);
        for (Vector3& point : solid_.points) {
            point = {point.x * size.millimetresPerMetre, point.y * size.millimetresPerMetre,
                     (point.z - lowest) * size.millimetresPerMetre * size.exaggeration + size.base};
            low_ = {std::min(low_.x, point.x), std::min(low_.y, point.y), 0.0};
            high_ = {std::max(high_.x, point.x), std::max(high_.y, point.y), 0.0};
        }
    }

    void AddWalls(const Border& border)
    {
        for (const auto& [from, to] : border) {
            solid_.triangles.push_back({from, Below(from), Below(to)});
            solid_.triangles.push_back({from, Below(to), to});
        }
    }

    /// A floor round its middle, under a box.
    void AddFloor(const Border& border)
    {
        const auto middle = static_cast<std::uint32_t>(solid_.points.size());
        solid_.points.push_back((low_ + high_) * 0.5);
        for (const auto& [from, to] : border)
            solid_.triangles.push_back({middle, Below(to), Below(from)});
    }

    TriangleMesh Take() { return std::move(solid_); }

private:
    std::uint32_t Below(std::uint32_t point)
    {
        if (below_[point] == kNone) {
            below_[point] = static_cast<std::uint32_t>(solid_.points.size());
            solid_.points.push_back({solid_.points[point].x, solid_.points[point].y, 0.0});
        }
        return below_[point];
    }

    TriangleMesh solid_;
    std::vector<std::uint32_t> below_;  // the floor's point under each one of the surface
    Vector3 low_{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(), 0.0};
    Vector3 high_{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), 0.0};
};

}  // namespace

TriangleMesh MakeGroundMesh(const PolygonText& polygons, const ElevationData& data)
{
    MeshBuilder builder(data);
    TriangleReader reader(polygons);
    for (TriangleReader::Triangle triangle; reader.Next(triangle);)
        builder.Add({PlaceOf(triangle[0], data), PlaceOf(triangle[1], data), PlaceOf(triangle[2], data)});
    return builder.Take();
}

TriangleMesh MakeSolid(const TriangleMesh& ground, const SolidSize& size)
{
    SolidBuilder builder(ground, size);
    const auto border = BorderOf(ground.triangles);
    builder.AddWalls(border);
    builder.AddFloor(border);
    return builder.Take();
}

}  // namespace tessara
