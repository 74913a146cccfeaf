#include "terrain/detail_tests.h"
#include "terrain/quad_node.h"
#include "terrain/terrain_lod.h"

#include <algorithm>
#include <utility>

namespace {

/// Order in which the quadrants are tested and visited.
constexpr std::uint32_t kVisitOrder[4] = {1, 0, 2, 3};

}  // namespace

/// What stays the same from node to node in one update.
struct UpdateStep {
    DetailTests needsDetail;
    const Odometer& odometer;
    bool realTime;
};

void TerrainLod::Update(const Viewer& viewer)
{
    if (!Root)
        return;
    Travel.Advance(viewer, ScaledLodFactor);
    const UpdateStep step{DetailTests(viewer, ScaledLodFactor), Travel, RealTime == 1};
    const bool isDue = Travel.IsDue(RootDue) || WalkEverything;
    if (!isDue && !step.realTime)
        return;
    const Odometer::Reading settled = std::exchange(RootDue, Odometer::kOpen);
    try {
        const Odometer::Reading due = Root->Update(*RootCorner, step, 0.0f, isDue ? Odometer::kDue : settled);
        if (RootDue == Odometer::kOpen)
            RootDue = due;
    } catch (...) {
        Travel.Void();
        throw;
    }
}

// The update skips what can't change: where no test has another answer than at the last visit, which changed nothing,
// and nothing was touched since, a visit wouldn't do anything. Whatever changes a node marks the way to it as due.

Odometer::Reading QuadNode::Update(QuadCorner& corner, const UpdateStep& step, float ownError,
                                   Odometer::Reading settled)
{
    if (step.realTime) {
        Changed = Resample(corner);
        if (Changed) {
            ComputeErrors(corner);
            settled = Odometer::kDue;
        }
    }

    const float x = static_cast<float>(corner.OriginX);
    const float z = static_cast<float>(corner.OriginZ);
    const float half = static_cast<float>(corner.HalfSide());
    const float side = static_cast<float>(corner.Side());
    const float middleX = static_cast<float>(corner.OriginX + corner.HalfSide());
    const float middleZ = static_cast<float>(corner.OriginZ + corner.HalfSide());
    const float endX = static_cast<float>(corner.OriginX + corner.Side());
    const float endZ = static_cast<float>(corner.OriginZ + corner.Side());
    const DetailTests& needsDetail = step.needsDetail;
    Slack slack;

    if (settled == Odometer::kDue) {
        if (!(ActiveMask & EdgeBit(0)) && needsDetail.Vertex(endX, Samples[1].Height, middleZ, VertexError[0], slack))
            ActivateEdgeVertex(0, corner);
        if (!(ActiveMask & EdgeBit(3)) && needsDetail.Vertex(middleX, Samples[4].Height, endZ, VertexError[1], slack))
            ActivateEdgeVertex(3, corner);
        for (const std::uint32_t child : kVisitOrder) {
            const float childX = child == 0 || child == 3 ? middleX : x;
            const float childZ = child >= 2 ? middleZ : z;
            if (corner.Level > 0 && !(ActiveMask & ChildBit(child)) &&
                needsDetail.Box(childX, childZ, half, LowHeight, HighHeight, QuadrantError[child], slack))
                ActivateChild(child, corner);
        }
    }

    if (ActiveMask & 0xF0) {
        for (const std::uint32_t child : kVisitOrder) {
            if (ActiveMask & ChildBit(child))
                UpdateChild(child, corner, step);
        }
    }
    if (settled != Odometer::kDue && DueReading(corner) != Odometer::kDue)
        return settled;  // and nothing below has touched this node

    if ((ActiveMask & EdgeBit(0)) && EdgeUsers[0] == 0 &&
        !needsDetail.Vertex(endX, Samples[1].Height, middleZ, VertexError[0], slack))
        TurnOff(0, corner);
    if ((ActiveMask & EdgeBit(3)) && EdgeUsers[1] == 0 &&
        !needsDetail.Vertex(middleX, Samples[4].Height, endZ, VertexError[1], slack))
        TurnOff(3, corner);

    if (ActiveMask == 0 && corner.Parent && !needsDetail.Box(x, z, side, LowHeight, HighHeight, ownError, slack)) {
        corner.Parent->Node->ReleaseChild(*corner.Parent, corner.ChildIndex);
        return Odometer::kDue;
    }
    Odometer::Reading due = step.odometer.After(slack.Least());
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (ActiveMask & ChildBit(i))
            due = std::min(due, ChildDue[i]);
    }
    return due;
}

/// Visits an active child where it is due. The real-time mode visits every node, for its heights.
void QuadNode::UpdateChild(std::uint32_t child, QuadCorner& corner, const UpdateStep& step)
{
    const bool isDue = step.odometer.IsDue(ChildDue[child]) || Owner->WalkEverything;
    if (!isDue && !step.realTime)
        return;
    const Odometer::Reading settled = std::exchange(ChildDue[child], Odometer::kOpen);
    QuadCorner childCorner;
    MakeChildCorner(childCorner, corner, child);
    const Odometer::Reading due =
        Children[child]->Update(childCorner, step, QuadrantError[child], isDue ? Odometer::kDue : settled);
    if (ChildDue[child] == Odometer::kOpen)
        ChildDue[child] = due;
}
