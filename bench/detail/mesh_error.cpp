#include "mesh_error.h"

#include "app/output/polygon_text.h"
#include "app/output/triangle_reader.h"
#include "host/camera.h"
#include "host/elevation/elevation_data.h"
#include "host/terrain_session.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

/// Twice the area of a triangle in plan.
double Cross(const TriangleReader::Vertex& a, const TriangleReader::Vertex& b, double x, double z)
{
    return static_cast<double>(b[0] - a[0]) * (z - static_cast<double>(a[2])) -
           static_cast<double>(b[2] - a[2]) * (x - static_cast<double>(a[0]));
}

/// Writes the heights of one triangle at the points under it.
class Rasteriser {
public:
    Rasteriser(std::vector<float>& heights, const ElevationData& data, const TerrainSession& terrain)
        : heights_(heights), data_(data), terrain_(terrain)
    {
    }

    void Add(const TriangleReader::Triangle& corners)
    {
        const auto& [a, b, c] = corners;
        const double area = Cross(a, b, static_cast<double>(c[0]), static_cast<double>(c[2]));
        if (area == 0.0)
            return;
        const auto [left, right] = std::minmax({a[0], b[0], c[0]});
        const auto [top, bottom] = std::minmax({a[2], b[2], c[2]});
        const int border = terrain_.Border();
        const int lastRow = std::min(static_cast<int>(bottom), data_.height - 1 + border);
        const int lastColumn = std::min(static_cast<int>(right), data_.width - 1 + border);
        for (int row = std::max(static_cast<int>(top), border); row <= lastRow; ++row) {
            for (int column = std::max(static_cast<int>(left), border); column <= lastColumn; ++column) {
                const double u = Cross(b, c, column, row) / area;
                const double v = Cross(c, a, column, row) / area;
                const double w = 1.0 - u - v;
                if (u < 0.0 || v < 0.0 || w < 0.0)
                    continue;
                const double height =
                    u * static_cast<double>(a[1]) + v * static_cast<double>(b[1]) + w * static_cast<double>(c[1]);
                heights_[static_cast<std::size_t>(row - border) * static_cast<std::size_t>(data_.width) +
                         static_cast<std::size_t>(column - border)] =
                    static_cast<float>(terrain_.Ground().Metres(height));
            }
        }
    }

private:
    std::vector<float>& heights_;
    const ElevationData& data_;
    const TerrainSession& terrain_;
};

bool IsInPicture(const Camera& camera, const Vector3& point)
{
    double x = 0.0;
    double y = 0.0;
    return camera.Project(point, x, y) && x >= 0.0 && x <= camera.Width() && y >= 0.0 && y <= camera.Height();
}

}  // namespace

std::vector<float> SurfaceHeights(const PolygonText& polygons, const ElevationData& data, const TerrainSession& terrain)
{
    std::vector<float> heights(data.metres.size(), std::numeric_limits<float>::quiet_NaN());
    Rasteriser rasteriser(heights, data, terrain);
    TriangleReader reader(polygons);
    for (TriangleReader::Triangle triangle; reader.Next(triangle);)
        rasteriser.Add(triangle);
    return heights;
}

MeshError MeasureError(const std::vector<float>& surface, const ElevationData& data, const TerrainSession& terrain,
                       const Camera& camera)
{
    const double plane = camera.Width() / (2.0 * camera.HalfWidth());
    const GroundFrame& ground = terrain.Ground();
    MeshError error;
    std::vector<float> all;
    double sum = 0.0;
    for (int row = 0; row < data.height; ++row) {
        for (int column = 0; column < data.width; ++column) {
            const std::size_t cell =
                static_cast<std::size_t>(column) + static_cast<std::size_t>(row) * static_cast<std::size_t>(data.width);
            const Vector3 point = ground.FromGrid(column, row, static_cast<double>(data.metres[cell]));
            if (!IsInPicture(camera, point))
                continue;
            const double off = std::fabs(static_cast<double>(surface[cell]) - static_cast<double>(data.metres[cell]));
            const double pixels = off * ground.Exaggeration() * plane / Length(point - camera.Position());
            if (!(pixels <= error.greatest)) {  // no surface counts as well
                error.greatest = std::isnan(pixels) ? std::numeric_limits<double>::infinity() : pixels;
                error.column = column;
                error.row = row;
            }
            sum += pixels;
            all.push_back(static_cast<float>(pixels));
        }
    }
    error.points = all.size();
    if (all.empty())
        return error;
    const auto most = all.begin() + static_cast<std::ptrdiff_t>((all.size() - 1) * 999 / 1000);
    std::nth_element(all.begin(), most, all.end());
    error.most = static_cast<double>(*most);
    error.mean = sum / static_cast<double>(all.size());
    return error;
}

}  // namespace tessara
