#include "terrain/quad_node.h"
#include "terrain/terrain_lod.h"

#include <bit>
#include <cmath>
#include <utility>

namespace {

/// Whether a node's square touches the grid. Both ends count: a node that begins one grid width from the grid's origin
/// still does.
bool Overlaps(const HeightSource& source, const QuadCorner& corner)
{
    const std::int32_t cell = 1 << source.Scale;
    return corner.OriginX <= source.OriginX + (source.Width << source.Scale) &&
           corner.OriginX + corner.Side() >= source.OriginX - cell &&
           corner.OriginZ <= source.OriginZ + (source.Height << source.Scale) &&
           corner.OriginZ + corner.Side() >= source.OriginZ - cell;
}

/// Heights of the source at a node's five sample positions, in the order of QuadNode::Samples.
struct SourceHeights {
    SourceHeights(const HeightSource& source, const QuadCorner& corner)
    {
        const std::int32_t x = corner.OriginX;
        const std::int32_t z = corner.OriginZ;
        const std::int32_t half = corner.HalfSide();
        const std::int32_t side = corner.Side();
        at[0] = source.SampleAt(x + half, z + half);
        at[1] = source.SampleAt(x + side, z + half);
        at[2] = source.SampleAt(x + half, z);
        at[3] = source.SampleAt(x, z + half);
        at[4] = source.SampleAt(x + half, z + side);
    }
    float at[5];
};

float Bilinear(float tx, float tz, float a, float b, float c, float d)
{
    return ((1.0f - tx) * a + tx * b) * (1.0f - tz) + ((1.0f - tx) * c + tx * d) * tz;
}

/// \return the value inside 0.0 to 1.0; 0.0 for what is no number
float ClampToUnit(float value)
{
    if (!(value > 0.0f))
        return 0.0f;
    return value < 1.0f ? value : 1.0f;
}

}  // namespace

void QuadNode::Merge(QuadCorner& corner)
{
    const HeightSource& source = Owner->Source;
    if (!Overlaps(source, corner))
        return;
    if (corner.Parent && corner.Parent->Node)
        corner.Parent->Node->ActivateChild(corner.ChildIndex, *corner.Parent);

    for (std::uint32_t i = 0; i < 4; ++i) {
        QuadCorner child;
        MakeChildCorner(child, corner, i);
        if (!Children[i] && corner.Level > source.Scale)
            Children[i] = Owner->NewNode(child);
        if (Children[i])
            Children[i]->Merge(child);
    }

    const SourceHeights heights(source, corner);
    for (std::uint32_t i = 0; i < 5; ++i) {
        if (heights.at[i] != 0.0f) {
            Changed = true;
            Samples[i].Height += heights.at[i];
        }
    }
    for (std::uint32_t i = 0; i < 4 && !Changed; ++i)
        Changed = Children[i] && Children[i]->Changed;
    if (Changed)
        PinUpward(corner);
}

void QuadNode::PinUpward(const QuadCorner& corner)
{
    if (Pinned)
        return;
    Pinned = true;
    if (corner.Parent && corner.Parent->Node)
        corner.Parent->Node->PinUpward(*corner.Parent);
}

bool QuadNode::Resample(const QuadCorner& corner)
{
    const SourceHeights heights(Owner->Source, corner);
    bool differs = false;
    std::uint32_t changed = 0;
    for (std::uint32_t i = 0; i < 5; ++i) {
        const float before = std::exchange(Samples[i].Height, heights.at[i]);
        differs = differs || before != heights.at[i];
        changed |= (std::bit_cast<std::uint32_t>(before) != std::bit_cast<std::uint32_t>(heights.at[i]) ? 1u : 0u) << i;
    }
    if (changed != 0) {
        MarkChangedCorners(changed);
        MarkStale(&corner);
    }
    return differs;
}

/// Tells all below which of their corners have changed with this node's samples. A corner of a node is a corner of one
/// of its children. \param samples bit i for sample i
void QuadNode::MarkChangedCorners(std::uint32_t samples)
{
    const auto mark = [this](std::uint32_t child, std::uint32_t at) {
        for (QuadNode* node = Children[child]; node; node = node->Children[at])
            node->Stale = static_cast<std::uint8_t>((node->Stale | 1u << at) & 31u);
    };
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (samples & 1u)
            mark(i, (i + 2) & 3);
        if (samples >> (i + 1) & 1u) {
            mark(i, (i + 3) & 3);
            mark((i + 3) & 3, i);
        }
    }
}

float QuadNode::HeightAt(QuadCorner& corner, float x, float z, QuadCorner& out) const
{
    const float half = static_cast<float>(corner.HalfSide());
    float tx = (x - static_cast<float>(corner.OriginX)) / half;
    float tz = (z - static_cast<float>(corner.OriginZ)) / half;
    const std::uint32_t ix = tx >= 1.0f ? 1 : 0;
    const std::uint32_t iz = tz >= 1.0f ? 1 : 0;
    const std::uint32_t quadrant = ix ^ ((iz ^ 1) + 2 * iz);
    if (Children[quadrant] && Children[quadrant]->Pinned) {
        QuadCorner child;
        MakeChildCorner(child, corner, quadrant);
        out = child;
        return Children[quadrant]->HeightAt(child, x, z, out);
    }
    tx = ClampToUnit(tx - static_cast<float>(ix));
    tz = ClampToUnit(tz - static_cast<float>(iz));

    const QuadSample* c = corner.Corners;
    const QuadSample* s = Samples;
    switch (quadrant) {
    case 0:
        return Bilinear(tx, tz, s[2].Height, c[0].Height, s[0].Height, s[1].Height);
    case 1:
        return Bilinear(tx, tz, c[1].Height, s[2].Height, s[3].Height, s[0].Height);
    case 2:
        return Bilinear(tx, tz, s[3].Height, s[0].Height, c[2].Height, s[4].Height);
    default:
        return Bilinear(tx, tz, s[0].Height, s[1].Height, s[4].Height, c[3].Height);
    }
}
