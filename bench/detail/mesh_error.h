#pragma once

#include <cstddef>
#include <vector>

namespace tessara {

class Camera;
class PolygonText;
class TerrainSession;
struct ElevationData;

/// By how many pixels the drawn surface is off the heights of the grid, over all grid points within a picture, hidden
/// or not: the difference in height times the distance of the picture's plane in pixels, over the distance to the eye.
struct MeshError {
    double greatest = 0.0;
    double most = 0.0;  ///< of all points but one in a thousand
    double mean = 0.0;
    std::size_t points = 0;
    int column = 0;  ///< where it is greatest
    int row = 0;
};

/// The heights in metres of the surface that triangles make, at each grid point; NaN where there is none.
/// \param polygons of a frame that sees all of the terrain
std::vector<float> SurfaceHeights(const PolygonText& polygons, const ElevationData& data,
                                  const TerrainSession& terrain);

MeshError MeasureError(const std::vector<float>& surface, const ElevationData& data, const TerrainSession& terrain,
                       const Camera& camera);

}  // namespace tessara
