#include "terrain/patch_writer.h"
#include "terrain/quad_node.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"

/// Visits the patches of the active subtree that the frustum lets through, children first. \param visit receives the
/// number of indices of each patch, whose vertices and indices are written by then
template <class Visit>
void QuadNode::WalkPatches(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, PatchWriter& patch,
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
        Children[i]->WalkPatches(child, clip, frustum, patch, visit);
    }
    if ((ActiveMask & 0xF0) == 0xF0)
        return;
    patch.WriteVertices(corner, Samples);
    visit(patch.WriteIndices(ActiveMask));
}

void QuadNode::Emit(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, PatchWriter& patch) const
{
    WalkPatches(corner, clip, frustum, patch, [&patch](std::uint32_t indexCount) {
        patch.WriteNormals(indexCount);
        patch.Draw(indexCount);
    });
}

void QuadNode::DumpTriangles(QuadCorner& corner, std::int32_t clip, const TerrainFrustum* frustum, PatchWriter& patch,
                             std::FILE* stream) const
{
    WalkPatches(corner, clip, frustum, patch,
                [&patch, stream](std::uint32_t indexCount) { patch.WriteText(indexCount, stream); });
}
