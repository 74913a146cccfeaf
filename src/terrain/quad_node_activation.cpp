#include "terrain/quad_node.h"
#include "terrain/terrain_lod.h"

#include <cassert>
#include <utility>

namespace {

/// Deepest way from a node up to the ancestor that it shares with a neighbour, and down again.
constexpr std::uint32_t kMaxClimb = 32;

}  // namespace

// Every change here reaches other nodes first, which may fail for want of memory, and sets its own bits and counters
// once nothing can fail any more. The order can't be seen from outside: bits are only ever set and counters only grow.

void QuadNode::ActivateEdgeVertex(std::uint32_t edge, QuadCorner& corner)
{
    if (ActiveMask & EdgeBit(edge))
        return;
    TurnOnEdge(edge, ReachNeighbour(edge, corner));
    MarkDue(corner);
}

/// Sets the vertex active on both sides. On the outer rim there is no neighbour.
void QuadNode::TurnOnEdge(std::uint32_t edge, QuadNode* neighbour)
{
    ActiveMask |= EdgeBit(edge);
    if (neighbour)
        neighbour->ActiveMask |= EdgeBit(edge ^ 2u);
}

/// Takes an active quadrant's hold on a vertex, in the node that owns it: here for an east or south edge, in the
/// neighbour for the others.
void QuadNode::HoldEdge(std::uint32_t edge, QuadNode* neighbour)
{
    TurnOnEdge(edge, neighbour);
    if (edge == 0 || edge == 3)
        ++EdgeUsers[edge & 1];
    else if (neighbour)
        ++neighbour->EdgeUsers[edge & 1];
}

/// The node of this node's size across an edge, brought into the mesh with its ancestors where it isn't there yet, and
/// marked as due below the common ancestor. \return null on the outer rim
QuadNode* QuadNode::ReachNeighbour(std::uint32_t edge, QuadCorner& corner)
{
    std::uint8_t indices[kMaxClimb];
    std::uint32_t depth = 0;
    QuadCorner* ancestor = &corner;
    bool holdsBoth = false;
    while (!holdsBoth) {
        const std::uint32_t at = ancestor->ChildIndex;
        if (!ancestor->Parent || !ancestor->Parent->Node)
            return nullptr;
        ancestor = ancestor->Parent;
        indices[depth++] = static_cast<std::uint8_t>(at ^ 1u ^ ((edge & 1u) << 1));
        holdsBoth = ((edge - at) & 2u) != 0;
    }

    // Mostly the way down is active already, and then no corner records are needed.
    QuadNode* node = ancestor->Node;
    for (std::uint32_t left = depth; node && left > 0; --left) {
        const std::uint32_t child = indices[left - 1];
        node->ChildDue[child] = Odometer::kDue;
        node = (node->ActiveMask & ChildBit(child)) ? node->Children[child] : nullptr;
    }
    return node ? node : ancestor->Node->ActivateDescendant(depth, indices, *ancestor);
}

QuadNode* QuadNode::ActivateDescendant(std::uint32_t count, const std::uint8_t* indices, QuadCorner& corner)
{
    const std::uint32_t child = indices[--count];
    ChildDue[child] = Odometer::kDue;
    if (!(ActiveMask & ChildBit(child)))
        ActivateChild(child, corner);
    if (count == 0)
        return Children[child];
    QuadCorner childCorner;
    MakeChildCorner(childCorner, corner, child);
    return Children[child]->ActivateDescendant(count, indices, childCorner);
}

void QuadNode::ActivateChild(std::uint32_t child, QuadCorner& corner)
{
    if (ActiveMask & ChildBit(child))
        return;
    const bool missing = !Children[child];
    CreateChild(child, corner);
    // Set before the neighbours are reached: their activation can come back to this node.
    ActiveMask |= ChildBit(child);
    const std::uint32_t edges[2] = {child, (child + 1) & 3};
    QuadNode* neighbours[2];
    try {
        for (std::uint32_t i = 0; i < 2; ++i)
            neighbours[i] = ReachNeighbour(edges[i], corner);
    } catch (...) {
        ActiveMask = static_cast<std::uint8_t>(ActiveMask & ~ChildBit(child));
        if (missing)
            Owner->FreeNode(std::exchange(Children[child], nullptr));
        throw;
    }
    for (std::uint32_t i = 0; i < 2; ++i)
        HoldEdge(edges[i], neighbours[i]);
    ChildDue[child] = Odometer::kDue;
    MarkDue(corner);
}

void QuadNode::CreateChild(std::uint32_t child, QuadCorner& corner)
{
    if (Children[child])
        return;
    QuadCorner childCorner;
    MakeChildCorner(childCorner, corner, child);
    Children[child] = Owner->NewNode(childCorner);
    MarkStale(&corner);
}

void QuadNode::ReleaseChild(const QuadCorner& corner, std::uint32_t child)
{
    const auto giveBack = [](QuadNode* owner, std::uint32_t vertex) {
        if (!owner)
            return;
        assert(owner->EdgeUsers[vertex] > 0);
        --owner->EdgeUsers[vertex];
    };
    ActiveMask = static_cast<std::uint8_t>(ActiveMask & ~ChildBit(child));
    const bool south = child >= 2;
    const bool west = child == 1 || child == 2;
    giveBack(south ? this : FindNeighbourAndMarkDue(1, corner), 1);
    giveBack(west ? FindNeighbourAndMarkDue(2, corner) : this, 0);
    MarkDue(corner);
    if (!Children[child]->Pinned) {
        Owner->FreeNode(std::exchange(Children[child], nullptr));
        MarkStale(&corner);
    }
}

/// Turns an edge vertex off, here and in the neighbour.
void QuadNode::TurnOff(std::uint32_t edge, const QuadCorner& corner)
{
    ActiveMask = static_cast<std::uint8_t>(ActiveMask & ~EdgeBit(edge));
    if (QuadNode* neighbour = FindNeighbourAndMarkDue(edge, corner))
        neighbour->ActiveMask = static_cast<std::uint8_t>(neighbour->ActiveMask & ~EdgeBit(edge ^ 2u));
    MarkDue(corner);
}
