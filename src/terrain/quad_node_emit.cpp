#include "terrain/patch_writer.h"
#include "terrain/quad_node.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"

/// Visits the nodes of the active subtree that have a free quadrant and that the frustum lets through, children first.
template <class Visit>
void QuadNode::WalkPatches(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum,
                           const Visit& visit) const
{
    if (clip != TerrainFrustum::Inside) {
        const float* offset = Owner->Translation;
        const float scale = Owner->ElevationScale;
        const float x = static_cast<float>(corner.OriginX);
        const float z = static_cast<float>(corner.OriginZ);
        const float side = static_cast<float>(corner.Side());
        const float low[3] = {x + offset[0], LowHeight * scale + offset[1], z + offset[2]};
        const float high[3] = {x + side + offset[0], HighHeight * scale + offset[1], z + side + offset[2]};
        clip = frustum->BoxTest(low, high);
        if (clip == TerrainFrustum::Outside)
            return;
    }
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (!(ActiveMask & ChildBit(i)))
            continue;
        QuadCorner child;
        MakeChildCorner(child, corner, i);
        Children[i]->WalkPatches(child, clip, frustum, visit);
    }
    if ((ActiveMask & 0xF0) == 0xF0)
        return;
    visit(corner, *this);
}

void QuadNode::Emit(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, PatchWriter& patch) const
{
    WalkPatches(corner, clip, frustum, [&patch](const QuadCorner& at, const QuadNode& node) {
        patch.Draw(patch.WriteShaded(at, node.Samples, node.ActiveMask));
    });
}

void QuadNode::DumpTriangles(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, PatchWriter& patch,
                             std::FILE* stream) const
{
    WalkPatches(corner, clip, frustum, [&patch, stream](const QuadCorner& at, const QuadNode& node) {
        patch.WriteText(patch.Write(at, node.Samples, node.ActiveMask), stream);
    });
}
