#include "terrain/quad_node.h"
#include "terrain/terrain_lod.h"

#include <cmath>

namespace {

/// Order in which the quadrants are tested and visited.
constexpr std::uint32_t kVisitOrder[4] = {1, 0, 2, 3};

float Largest(float a, float b, float c)
{
    float largest = a;
    if (b > largest)
        largest = b;
    if (c > largest)
        largest = c;
    return largest;
}

}  // namespace

bool QuadNode::VertexNeedsDetail(float x, float y, float z, float error, const Viewer& viewer) const
{
    const float distance = Largest(std::fabs(x - viewer.x), std::fabs(y - viewer.y), std::fabs(z - viewer.z));
    return error * Owner->ScaledLodFactor > distance;
}

bool QuadNode::BoxNeedsDetail(float x, float z, float size, float low, float high, float error,
                              const Viewer& viewer) const
{
    const float half = size * 0.5f;
    const float dx = std::fabs(x + half - viewer.x) - half;
    const float dy = std::fabs((low + high) * 0.5f - viewer.y) - (high - low) * 0.5f;
    const float dz = std::fabs(z + half - viewer.z) - half;
    return error * Owner->ScaledLodFactor > Largest(dx, dy, dz);
}

void QuadNode::Update(QuadCorner& corner, const Viewer& viewer, float ownError)
{
    if (Owner->RealTime == 1) {
        Changed = Resample(corner);
        if (Changed)
            ComputeErrors(corner);
    }

    const std::int32_t side = corner.Side();
    const std::int32_t half = corner.HalfSide();
    const float x = static_cast<float>(corner.OriginX);
    const float z = static_cast<float>(corner.OriginZ);
    const float middleX = static_cast<float>(corner.OriginX + half);
    const float middleZ = static_cast<float>(corner.OriginZ + half);

    const auto eastNeedsDetail = [&] {
        return VertexNeedsDetail(static_cast<float>(corner.OriginX + side), Samples[1].Height, middleZ, VertexError[0],
                                 viewer);
    };
    const auto southNeedsDetail = [&] {
        return VertexNeedsDetail(middleX, Samples[4].Height, static_cast<float>(corner.OriginZ + side), VertexError[1],
                                 viewer);
    };

    if (!(ActiveMask & EdgeBit(0)) && eastNeedsDetail())
        ActivateEdgeVertex(0, corner);
    if (!(ActiveMask & EdgeBit(3)) && southNeedsDetail())
        ActivateEdgeVertex(3, corner);

    if (corner.Level > 0) {
        for (const std::uint32_t child : kVisitOrder) {
            const float childX = child == 0 || child == 3 ? middleX : x;
            const float childZ = child >= 2 ? middleZ : z;
            if (!(ActiveMask & ChildBit(child)) && BoxNeedsDetail(childX, childZ, static_cast<float>(half), LowHeight,
                                                                  HighHeight, QuadrantError[child], viewer))
                ActivateChild(child, corner);
        }
    }

    if (ActiveMask & 0xF0) {
        for (const std::uint32_t child : kVisitOrder) {
            if (!(ActiveMask & ChildBit(child)))
                continue;
            QuadCorner childCorner;
            MakeChildCorner(childCorner, corner, child);
            Children[child]->Update(childCorner, viewer, QuadrantError[child]);
        }
    }

    const auto turnOff = [this, &corner](std::uint32_t edge) {
        ActiveMask = static_cast<std::uint8_t>(ActiveMask & ~EdgeBit(edge));
        if (QuadNode* neighbour = FindNeighbour(edge, corner))
            neighbour->ActiveMask = static_cast<std::uint8_t>(neighbour->ActiveMask & ~EdgeBit(edge ^ 2u));
    };
    if ((ActiveMask & EdgeBit(0)) && EdgeUsers[0] == 0 && !eastNeedsDetail())
        turnOff(0);
    if ((ActiveMask & EdgeBit(3)) && EdgeUsers[1] == 0 && !southNeedsDetail())
        turnOff(3);

    if (ActiveMask == 0 && corner.Parent &&
        !BoxNeedsDetail(x, z, static_cast<float>(side), LowHeight, HighHeight, ownError, viewer))
        corner.Parent->Node->ReleaseChild(*corner.Parent, corner.ChildIndex);
}
