#pragma once

#include "app/output/triangle_mesh.h"

#include <string_view>

namespace tessara {

class PolygonText;
struct ElevationData;

/// What the numbers of a ground mesh are, and of a solid.
inline constexpr std::string_view kGroundUnits = "metres: x east and y north of the south-west corner, z the height";
inline constexpr std::string_view kSolidUnits = "millimetres: x east and y north of the south-west corner";

/// The surface of the ground, from the triangles of a frame that sees all of it. Every point is one of the grid's, in
/// metres: x east and y north of the south-west corner, z the height as measured. No triangle is without area, and
/// the border is that of the grid.
TriangleMesh MakeGroundMesh(const PolygonText& polygons, const ElevationData& data);

/// What a solid for a printer measures, in millimetres.
struct SolidSize {
    double millimetresPerMetre = 1.0;
    double exaggeration = 1.0;
    double base = 3.0;  ///< thickness under the lowest point
};

/// The ground with walls and a base, in millimetres; a closed body that stands at z 0.
TriangleMesh MakeSolid(const TriangleMesh& ground, const SolidSize& size);

}  // namespace tessara
