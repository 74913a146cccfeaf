#pragma once

#include "terrain/odometer.h"
#include "terrain/quad_corner.h"

#include <cstdint>
#include <cstdio>

class PatchWriter;
class TerrainFrustum;
class TerrainLod;
struct UpdateStep;

/// Bits of QuadNode::ActiveMask: edge vertex e in bit e, child i in bit i + 4.
constexpr std::uint8_t EdgeBit(std::uint32_t edge)
{
    return static_cast<std::uint8_t>(1u << edge);
}

constexpr std::uint8_t ChildBit(std::uint32_t child)
{
    return static_cast<std::uint8_t>(16u << child);
}

/// One square of the terrain's quadtree. It stores its five own heights, its error and bound figures and its activity;
/// everything that a walk can derive comes along in the QuadCorner, which every operation takes.
///
/// Between any two operations of TerrainLod these hold:
/// - a child bit implies that the child exists and that the bits of its two edges are set;
/// - an edge vertex is active on both sides of its edge, where both nodes exist; its owner is the node that has it as
///   east or south vertex;
/// - EdgeUsers[0] counts the active children around the east vertex (own 0 and 3, the east neighbour's 1 and 2),
///   EdgeUsers[1] those around the south vertex (own 2 and 3, the south neighbour's 0 and 1).
class QuadNode {
public:
    /// A leaf that lies flat on the surface of its corners. Writes itself into the corner record.
    QuadNode(TerrainLod* owner, QuadCorner& corner);
    QuadNode(const QuadNode&) = delete;
    QuadNode& operator=(const QuadNode&) = delete;

    /// Frees the whole subtree.
    ~QuadNode();

    // Structure (quad_node.cpp)

    /// Fills the record of a child, which needn't exist. \return false at a level that has no children or for a child
    /// above 3
    bool MakeChildCorner(QuadCorner& out, QuadCorner& corner, std::uint32_t child) const;

    /// The node of the same size across an edge, or null. Creates nothing.
    static QuadNode* FindNeighbour(std::uint32_t edge, const QuadCorner& corner);

    /// This node and all below it.
    std::int32_t CountNodes() const;

    // Build and heights (quad_node_build.cpp)

    /// Creates the nodes that the height source needs below this one, activates them and adds the source's heights.
    /// Runs once on a new tree. \throws std::bad_alloc, with the partial tree linked
    void Merge(QuadCorner& corner);

    /// Marks this node and its ancestors as carrying merged heights.
    void PinUpward(const QuadCorner& corner);

    /// Replaces the five heights with those of the source. \return whether one of them changed
    bool Resample(const QuadCorner& corner);

    /// Height of the stored surface at a position in tree units, through pinned children. \param out receives the
    /// record of the deepest node that the walk descended to; left alone when it stays at this node
    float HeightAt(QuadCorner& corner, float x, float z, QuadCorner& out) const;

    // Error and bounds (quad_node_errors.cpp)

    /// Fills the error and bound figures of the whole subtree. \return the largest error in it, at least 0.0
    float ComputeErrors(QuadCorner& corner);

    // Activation (quad_node_activation.cpp). A failed allocation takes back what the call has done to this node, so
    // that the tree stays sound. All but ReleaseChild throw std::bad_alloc.

    /// Turns an edge vertex on, here and in the neighbour, which is created where needed. Takes no hold on it.
    void ActivateEdgeVertex(std::uint32_t edge, QuadCorner& corner);

    /// Brings a quadrant into the mesh, with its holds on its two edge vertices.
    void ActivateChild(std::uint32_t child, QuadCorner& corner);

    /// Makes a missing child: unpinned and flat on this node's surface.
    void CreateChild(std::uint32_t child, QuadCorner& corner);

    /// Takes a quadrant out of the mesh, gives its holds back and frees the child unless it is pinned.
    void ReleaseChild(const QuadCorner& corner, std::uint32_t child);

    // Level of detail (quad_node_update.cpp)

    /// Adapts the active part of the subtree to the viewer. The node may be gone afterwards. \param ownError error of
    /// this node as its parent knows it \param settled a reading up to which nothing in the subtree needs another look
    /// but at its heights, or Odometer::kDue \return such a reading for the next update
    /// \throws std::bad_alloc, with a sound tree that is not fully adapted
    Odometer::Reading Update(QuadCorner& corner, const UpdateStep& step, float ownError, Odometer::Reading settled);

    // Emission (quad_node_emit.cpp)

    /// Draws the active subtree: one glDrawElements for each node with a free quadrant. \param clip what BoxTest gave
    /// for the parent, 0 for inside
    void Emit(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, PatchWriter& patch) const;

    /// Walks like Emit and writes three vertex lines per triangle to a text stream.
    void DumpTriangles(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, PatchWriter& patch,
                       std::FILE* stream) const;

    QuadNode* Children[4];      ///< owned, null when absent
    float VertexError[2];       ///< of the east and the south vertex
    float QuadrantError[4];     ///< bound of each quadrant
    float LowHeight;            ///< lowest height in the subtree
    float HighHeight;           ///< highest height in the subtree
    std::uint8_t ActiveMask;    ///< see EdgeBit and ChildBit
    std::uint8_t EdgeUsers[2];  ///< active quadrants that hold the east and the south vertex
    bool Pinned : 1;            ///< carries merged heights: never freed by the update
    bool Changed : 1;           ///< heights changed since the last error pass
    std::uint8_t Stale : 5;     ///< what else did: bit i for corner i, kStaleWithin for anything at or below the node
    QuadSample Samples[5];      ///< the own heights
    TerrainLod* Owner;          ///< not owned

    /// Until when each active child's subtree needs no visit of the update: up to then no answer in it changes.
    /// Odometer::kDue when something in it was touched, kOpen during a visit. Never above those of its own children.
    Odometer::Reading ChildDue[4];

    static constexpr std::uint8_t kStaleWithin = 16;

private:
    float LargestError(const QuadCorner& corner) const;
    float RenewErrors(QuadCorner& corner);
    float RenewChildErrors(QuadCorner& corner, std::uint32_t child);
    void MarkChangedCorners(std::uint32_t samples);
    static void MarkStale(const QuadCorner* corner);
    void MarkDue(const QuadCorner& corner) const;
    Odometer::Reading& DueReading(const QuadCorner& corner) const;
    void UpdateChild(std::uint32_t child, QuadCorner& corner, const UpdateStep& step);
    void TurnOff(std::uint32_t edge, const QuadCorner& corner);
    static QuadNode* FindNeighbourAndMarkDue(std::uint32_t edge, const QuadCorner& corner);
    QuadNode* ReachNeighbour(std::uint32_t edge, QuadCorner& corner);
    QuadNode* ActivateDescendant(std::uint32_t count, const std::uint8_t* indices, QuadCorner& corner);
    void TurnOnEdge(std::uint32_t edge, QuadNode* neighbour);
    void HoldEdge(std::uint32_t edge, QuadNode* neighbour);
    template <class Visit>
    void WalkPatches(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, const Visit& visit) const;
};
