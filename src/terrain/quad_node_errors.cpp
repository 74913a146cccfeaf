#include "terrain/quad_node.h"
#include "terrain/terrain_lod.h"

#include <cmath>

namespace {

/// Departure of a vertex from the midpoint of the line between two others.
float MidpointError(QuadSample vertex, QuadSample a, QuadSample b)
{
    return std::fabs(vertex.Height - (a.Height + b.Height) * 0.5f);
}

void Raise(float& maximum, float value)
{
    if (value > maximum)
        maximum = value;
}

void Lower(float& minimum, float value)
{
    if (value < minimum)
        minimum = value;
}

/// Departure of a node's centre from the coarser surface. The centre of an even child falls on the north-east to
/// south-west diagonal of its square, that of an odd child on the other one.
float CenterError(const QuadCorner& corner, const QuadSample* samples)
{
    const std::uint32_t first = corner.ChildIndex & 1;
    return MidpointError(samples[0], corner.Corners[first], corner.Corners[first + 2]);
}

}  // namespace

// A pass has the results of one over the whole subtree, but goes only where they can be other than those of the last
// pass. That stands as long as no corner and no height of a node has changed, nothing below it was made or freed, and
// no pass began below it: Resample marks the way up before it orders one. A changed corner of a node is a corner of one
// child and no more, so it leads down a single line.

float QuadNode::ComputeErrors(QuadCorner& corner)
{
    MarkDue(corner);
    return RenewErrors(corner);
}

/// Asks the next pass from above to visit the node of the record and those on the way.
void QuadNode::MarkStale(const QuadCorner* corner)
{
    for (; corner && !(corner->Node->Stale & kStaleWithin); corner = corner->Parent)
        corner->Node->Stale |= kStaleWithin;
}

/// The result of the last pass, which stands.
float QuadNode::LargestError(const QuadCorner& corner) const
{
    float largest = 0.0f;
    Raise(largest, CenterError(corner, Samples));
    for (const float error : VertexError)
        Raise(largest, error);
    for (const float error : QuadrantError)
        Raise(largest, error);
    return largest;
}

float QuadNode::RenewErrors(QuadCorner& corner)
{
    const QuadSample* c = corner.Corners;
    const QuadSample* s = Samples;
    LowHeight = s[0].Height;
    HighHeight = s[0].Height;
    for (std::uint32_t i = 0; i < 4; ++i) {
        Lower(LowHeight, c[i].Height);
        Raise(HighHeight, c[i].Height);
    }
    for (std::uint32_t i = 1; i < 5; ++i) {
        Lower(LowHeight, s[i].Height);
        Raise(HighHeight, s[i].Height);
    }
    VertexError[0] = MidpointError(s[1], c[0], c[3]);
    VertexError[1] = MidpointError(s[4], c[2], c[3]);
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (const QuadNode* child = Children[i]) {
            QuadrantError[i] = RenewChildErrors(corner, i);
            Lower(LowHeight, child->LowHeight);
            Raise(HighHeight, child->HighHeight);
        } else {
            // A quarter of the twist: what the bilinear quadrant departs from its two flat halves.
            const float edges = s[i + 1].Height + s[((i + 1) & 3) + 1].Height;
            QuadrantError[i] = std::fabs(s[0].Height + c[i].Height - edges) * 0.25f;
        }
    }
    Changed = false;
    Stale = 0;
    return LargestError(corner);
}

/// The result of a pass over a child. The update has to look at the child again where it has other figures, or where
/// this node has another figure of it.
float QuadNode::RenewChildErrors(QuadCorner& corner, std::uint32_t child)
{
    QuadNode& node = *Children[child];
    QuadCorner childCorner;
    MakeChildCorner(childCorner, corner, child);
    const bool renew = node.Stale != 0 || Owner->WalkEverything;
    const float error = renew ? node.RenewErrors(childCorner) : node.LargestError(childCorner);
    if (renew || error != QuadrantError[child])
        ChildDue[child] = Odometer::kDue;
    return error;
}
