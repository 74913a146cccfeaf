#include "terrain/quad_node.h"

#include "terrain/terrain_lod.h"

#include <algorithm>
#include <cmath>
#include <utility>

QuadNode::QuadNode(TerrainLod* owner, QuadCorner& corner)
    : Children{},
      VertexError{0.0f, 0.0f},
      ActiveMask(0),
      EdgeUsers{0, 0},
      Pinned(false),
      Changed(false),
      Stale(kStaleWithin),
      Owner(owner),
      ChildDue{}
{
    corner.Node = this;
    const float c[4] = {corner.Corners[0].Height, corner.Corners[1].Height, corner.Corners[2].Height,
                        corner.Corners[3].Height};
    Samples[0].Height = (c[0] + c[1] + c[2] + c[3]) / 4.0f;
    Samples[1].Height = (c[3] + c[0]) / 2.0f;
    Samples[2].Height = (c[0] + c[1]) / 2.0f;
    Samples[3].Height = (c[1] + c[2]) / 2.0f;
    Samples[4].Height = (c[2] + c[3]) / 2.0f;
    for (std::uint32_t i = 0; i < 4; ++i) {
        const float inner = Samples[i + 1].Height + Samples[((i + 1) & 3) + 1].Height;
        QuadrantError[i] = std::fabs(Samples[0].Height + c[i] - inner) * 0.25f;
    }
    LowHeight = *std::min_element(c, c + 4);
    HighHeight = *std::max_element(c, c + 4);
}

QuadNode::~QuadNode()
{
    for (QuadNode*& child : Children) {
        if (child)
            Owner->FreeNode(std::exchange(child, nullptr));
    }
}

bool QuadNode::MakeChildCorner(QuadCorner& out, QuadCorner& corner, std::uint32_t child) const
{
    if (corner.Level < 0 || child > 3)
        return false;
    const std::int32_t half = corner.HalfSide();
    out.Parent = &corner;
    out.Node = Children[child];
    out.ChildIndex = child;
    out.Level = corner.Level - 1;
    out.OriginX = corner.OriginX + (child == 0 || child == 3 ? half : 0);
    out.OriginZ = corner.OriginZ + (child >= 2 ? half : 0);
    // A child's outer corner is the parent's; the two beside it are edge vertices and the one across is the centre.
    out.Corners[child] = corner.Corners[child];
    out.Corners[(child + 1) & 3] = Samples[((child + 1) & 3) + 1];
    out.Corners[(child + 2) & 3] = Samples[0];
    out.Corners[(child + 3) & 3] = Samples[child + 1];
    return true;
}

namespace {

/// Follows the way to a neighbour. \param step receives each parent and child on the way down, the child may be missing
template <class Step>
QuadNode* FollowToNeighbour(std::uint32_t edge, const QuadCorner& corner, const Step& step)
{
    if (!corner.Parent)
        return nullptr;
    const std::uint32_t mirror = corner.ChildIndex ^ 1u ^ ((edge & 1u) << 1);
    const bool sibling = ((edge - corner.ChildIndex) & 2u) != 0;
    QuadNode* parent = sibling ? corner.Parent->Node : FollowToNeighbour(edge, *corner.Parent, step);
    if (!parent)
        return nullptr;
    step(*parent, mirror);
    return parent->Children[mirror];
}

}  // namespace

QuadNode* QuadNode::FindNeighbour(std::uint32_t edge, const QuadCorner& corner)
{
    return FollowToNeighbour(edge, corner, [](const QuadNode&, std::uint32_t) {});
}

/// For a neighbour that is about to change. The way above the common ancestor is left to the caller.
QuadNode* QuadNode::FindNeighbourAndMarkDue(std::uint32_t edge, const QuadCorner& corner)
{
    return FollowToNeighbour(edge, corner,
                             [](QuadNode& parent, std::uint32_t child) { parent.ChildDue[child] = Odometer::kDue; });
}

/// Asks the next update, or this one if it hasn't been there yet, to visit the node of the record. Where the way up is
/// marked already, all above is marked too or will look at what lies below it before it ends its own visit.
void QuadNode::MarkDue(const QuadCorner& corner) const
{
    for (const QuadCorner* at = &corner; at->Parent; at = at->Parent) {
        Odometer::Reading& due = at->Parent->Node->ChildDue[at->ChildIndex];
        if (due == Odometer::kDue)
            return;
        due = Odometer::kDue;
    }
    Owner->RootDue = Odometer::kDue;
}

Odometer::Reading& QuadNode::DueReading(const QuadCorner& corner) const
{
    return corner.Parent ? corner.Parent->Node->ChildDue[corner.ChildIndex] : Owner->RootDue;
}

std::int32_t QuadNode::CountNodes() const
{
    std::int32_t count = 1;
    for (const QuadNode* child : Children) {
        if (child)
            count += child->CountNodes();
    }
    return count;
}
