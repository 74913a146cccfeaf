#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tessara {

/// A node of a terrain's tree that draws triangles, found by them. In tree units: columns and rows of the matrix, and
/// normalised heights.
struct DrawnNode {
    int centerX = 0;
    int centerZ = 0;
    int half = 0;  ///< from the centre to each side, a power of two; 0 where it isn't known
    float low = 0.0f;
    float high = 0.0f;
    bool beyond = false;  ///< its centre lies beyond the grid
};

/// A vertex of a drawn triangle in tree units.
struct DrawnVertex {
    float x;
    float y;
    float z;
};

/// The nodes of a frame, and to which of them each triangle belongs.
struct NodeSurvey {
    std::vector<DrawnNode> nodes;
    std::vector<std::size_t> nodeOf;  ///< for each triangle
    std::size_t active = 0;           ///< the drawing nodes and all nodes above them
};

/// Sorts triangles, three vertices each, by the nodes that drew them. A node draws a fan: each of its triangles begins
/// at its centre, and reaches its border. What lies beyond the last column or row is drawn at it; at the corner of both
/// it can't be told which node it was.
/// \param rootHalf half size of the root
NodeSurvey SurveyNodes(std::span<const DrawnVertex> vertices, int rootHalf);

/// Level of a node by its half size: 0 for the smallest.
int LevelOf(const DrawnNode& node) noexcept;

}  // namespace tessara
