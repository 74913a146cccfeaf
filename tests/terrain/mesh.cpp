#include "terrain/mesh.h"

#include "terrain/patch_writer.h"
#include "terrain/terrain_lod.h"

#include <algorithm>
#include <bit>
#include <map>
#include <sstream>
#include <utility>

namespace {

/// Visits every node that exists, with its corner record.
template <class Visit>
void ForEachNode(QuadNode& node, QuadCorner& corner, const Visit& visit)
{
    visit(node, corner);
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (!node.Children[i])
            continue;
        QuadCorner child;
        node.MakeChildCorner(child, corner, i);
        ForEachNode(*node.Children[i], child, visit);
    }
}

bool Active(const QuadNode* node, std::uint32_t child)
{
    return node && (node->ActiveMask & ChildBit(child));
}

void ReadNode(const QuadNode& node, QuadCorner& corner, PatchWriter& patch, TerrainLod& terrain, Mesh& mesh)
{
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (!Active(&node, i))
            continue;
        QuadCorner child;
        node.MakeChildCorner(child, corner, i);
        ReadNode(*node.Children[i], child, patch, terrain, mesh);
    }
    if ((node.ActiveMask & 0xF0) == 0xF0)
        return;
    const std::uint32_t count = patch.Write(corner, node.Samples, node.ActiveMask);
    for (std::uint32_t i = 0; i < count; i += 3) {
        std::array<Mesh::Vertex, 3> triangle;
        for (std::uint32_t k = 0; k < 3; ++k) {
            const float* at = terrain.VertexArray[terrain.IndexArray[i + k]];
            triangle[k] = {static_cast<std::int32_t>(at[0]), static_cast<std::int32_t>(at[2]), at[1]};
        }
        mesh.triangles.push_back(triangle);
    }
}

using Place = std::pair<std::int32_t, std::int32_t>;

}  // namespace

Mesh ReadMesh(TerrainLod& terrain)
{
    Mesh mesh;
    mesh.side = terrain.RootCorner->Side();
    // A source as wide as the root keeps the vertices where they are; colours would read past the real grid.
    const HeightSource source = terrain.Source;
    const bool color = terrain.UseVertexColor;
    terrain.UseVertexColor = false;
    terrain.Source.Width = terrain.Source.Height = mesh.side + 1;
    PatchWriter patch(terrain);
    ReadNode(*terrain.Root, *terrain.RootCorner, patch, terrain, mesh);
    terrain.Source = source;
    terrain.UseVertexColor = color;
    return mesh;
}

std::string FindCrack(const Mesh& mesh)
{
    std::map<std::pair<Place, Place>, int> edges;
    std::int64_t doubleArea = 0;
    for (const auto& t : mesh.triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            const auto& from = t[i];
            const auto& to = t[(i + 1) % 3];
            if (++edges[{{from.x, from.z}, {to.x, to.z}}] > 1)
                return "two triangles run along the same edge in the same direction";
        }
        // Counter-clockwise from above, with z to the south, is a positive area here.
        doubleArea +=
            std::int64_t{t[1].z - t[0].z} * (t[2].x - t[0].x) - std::int64_t{t[1].x - t[0].x} * (t[2].z - t[0].z);
    }
    for (const auto& [edge, count] : edges) {
        const auto& [from, to] = edge;
        const bool rim = (from.first == to.first && (from.first == 0 || from.first == mesh.side)) ||
                         (from.second == to.second && (from.second == 0 || from.second == mesh.side));
        if (rim == edges.contains({to, from})) {
            std::ostringstream text;
            text << "edge (" << from.first << ", " << from.second << ") - (" << to.first << ", " << to.second << ")";
            return text.str();
        }
    }
    return doubleArea == std::int64_t{2} * mesh.side * mesh.side ? "" : "the area is not the root's";
}

std::string FindBrokenRule(TerrainLod& terrain)
{
    std::ostringstream broken;
    std::size_t nodes = 0;
    ForEachNode(*terrain.Root, *terrain.RootCorner, [&](QuadNode& node, QuadCorner& corner) {
        ++nodes;
        const auto say = [&](const char* rule) {
            broken << rule << " at (" << corner.OriginX << ", " << corner.OriginZ << ") level " << corner.Level << "; ";
        };
        for (std::uint32_t i = 0; i < 4; ++i) {
            if (!Active(&node, i))
                continue;
            if (!node.Children[i])
                say("child bit without child");
            if (!(node.ActiveMask & EdgeBit(i)) || !(node.ActiveMask & EdgeBit((i + 1) & 3)))
                say("active child without its edge bits");
        }
        const QuadNode* east = QuadNode::FindNeighbour(0, corner);
        const QuadNode* south = QuadNode::FindNeighbour(3, corner);
        if (node.EdgeUsers[0] != Active(&node, 0) + Active(&node, 3) + Active(east, 1) + Active(east, 2))
            say("east counter");
        if (node.EdgeUsers[1] != Active(&node, 2) + Active(&node, 3) + Active(south, 0) + Active(south, 1))
            say("south counter");
        if (east && !(node.ActiveMask & EdgeBit(0)) != !(east->ActiveMask & EdgeBit(2)))
            say("east vertex on one side only");
        if (south && !(node.ActiveMask & EdgeBit(3)) != !(south->ActiveMask & EdgeBit(1)))
            say("south vertex on one side only");
    });
    if (nodes != terrain.Nodes.BlocksUsed())
        broken << "nodes outside of the tree";
    return broken.str();
}

std::vector<std::uint32_t> ReadTree(const TerrainLod& terrain)
{
    std::vector<std::uint32_t> state;
    ForEachNode(*terrain.Root, *terrain.RootCorner, [&](QuadNode& node, QuadCorner&) {
        state.push_back(node.ActiveMask | static_cast<std::uint32_t>(node.EdgeUsers[0]) << 8 |
                        static_cast<std::uint32_t>(node.EdgeUsers[1]) << 16 | (node.Pinned ? 1u : 0u) << 24 |
                        (node.Changed ? 1u : 0u) << 25);
        const auto add = [&](float figure) { state.push_back(std::bit_cast<std::uint32_t>(figure)); };
        std::for_each(node.VertexError, node.VertexError + 2, add);
        std::for_each(node.QuadrantError, node.QuadrantError + 4, add);
        add(node.LowHeight);
        add(node.HighHeight);
        for (const QuadSample& sample : node.Samples)
            add(sample.Height);
        for (const QuadNode* child : node.Children)
            state.push_back(child ? 1 : 0);
    });
    return state;
}

std::size_t CountTriangles(TerrainLod& terrain)
{
    return ReadMesh(terrain).triangles.size();
}
