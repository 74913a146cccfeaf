#include "app/output/triangle_mesh.h"

#include <unordered_set>

namespace tessara {

namespace {

std::uint64_t Key(std::uint32_t from, std::uint32_t to)
{
    return std::uint64_t{from} << 32 | to;
}

}  // namespace

std::vector<TriangleMesh::BorderEdge> BorderOf(const std::vector<TriangleMesh::Triangle>& triangles)
{
    std::unordered_set<std::uint64_t> edges;
    edges.reserve(triangles.size() * 3);
    for (const auto& [a, b, c] : triangles)
        edges.insert({Key(a, b), Key(b, c), Key(c, a)});
    std::vector<TriangleMesh::BorderEdge> border;
    for (const TriangleMesh::Triangle& triangle : triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            const TriangleMesh::BorderEdge edge{triangle[i], triangle[(i + 1) % 3]};
            if (!edges.contains(Key(edge.to, edge.from)))
                border.push_back(edge);
        }
    }
    return border;
}

}  // namespace tessara
