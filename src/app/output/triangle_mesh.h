#pragma once

#include "host/vector3.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tessara {

/// Triangles over a list of points without repeats, counter-clockwise seen from outside.
struct TriangleMesh {
    using Triangle = std::array<std::uint32_t, 3>;

    /// An edge of one triangle alone, in the direction in which that triangle has it.
    struct BorderEdge {
        std::uint32_t from = 0;
        std::uint32_t to = 0;
    };

    std::vector<Vector3> points;
    std::vector<Triangle> triangles;
};

/// The edges that only one triangle has, in the triangles' order.
std::vector<TriangleMesh::BorderEdge> BorderOf(const std::vector<TriangleMesh::Triangle>& triangles);

}  // namespace tessara
