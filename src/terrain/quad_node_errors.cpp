#include "terrain/quad_node.h"

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

}  // namespace

float QuadNode::ComputeErrors(QuadCorner& corner)
{
    const QuadSample* c = corner.Corners;
    const QuadSample* s = Samples;
    // The centre of an even child falls on the north-east to south-west diagonal of its square, that of an odd child on
    // the other one.
    const bool odd = (corner.ChildIndex & 1) != 0;
    float largest = 0.0f;
    Raise(largest, odd ? MidpointError(s[0], c[1], c[3]) : MidpointError(s[0], c[0], c[2]));

    LowHeight = s[0].Height;
    HighHeight = s[0].Height;
    for (std::uint32_t i = 0; i < 4; ++i) {
        Lower(LowHeight, c[i].Height);
        Raise(HighHeight, c[i].Height);
    }
    VertexError[0] = MidpointError(s[1], c[0], c[3]);
    VertexError[1] = MidpointError(s[4], c[2], c[3]);
    Raise(largest, VertexError[0]);
    Raise(largest, VertexError[1]);
    for (std::uint32_t i = 1; i < 5; ++i) {
        Lower(LowHeight, s[i].Height);
        Raise(HighHeight, s[i].Height);
    }

    for (std::uint32_t i = 0; i < 4; ++i) {
        if (QuadNode* child = Children[i]) {
            QuadCorner childCorner;
            MakeChildCorner(childCorner, corner, i);
            QuadrantError[i] = child->ComputeErrors(childCorner);
            Lower(LowHeight, child->LowHeight);
            Raise(HighHeight, child->HighHeight);
        } else {
            // A quarter of the twist: what the bilinear quadrant departs from its two flat halves.
            const float edges = s[i + 1].Height + s[((i + 1) & 3) + 1].Height;
            QuadrantError[i] = std::fabs(s[0].Height + c[i].Height - edges) * 0.25f;
        }
        Raise(largest, QuadrantError[i]);
    }
    Changed = false;
    return largest;
}
