#include "terrain/terrain_lod.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::int32_t kLargestSide = 1 << 30;

/// The smallest level whose root covers the source.
std::int32_t LevelOf(const HeightSource& source)
{
    const std::int32_t size = std::max(source.Width, source.Height);
    if (size > kLargestSide)
        throw std::length_error("the height source is too large for the tree");
    std::int32_t level = 0;
    while ((2 << level) < size)
        ++level;
    return level;
}

}  // namespace

TerrainLod::TerrainLod() : RootCorner(new QuadCorner), Nodes(sizeof(QuadNode))
{
    for (float* normal : NormalArray) {
        normal[0] = 0.0f;
        normal[1] = 0.0f;
        normal[2] = 1.0f;
    }
}

TerrainLod::~TerrainLod()
{
    DropTree();
    delete RootCorner;
}

void TerrainLod::InitQuadTree(HeightSource source)
{
    Source = source;
    try {
        RootCorner->Level = LevelOf(source);
    } catch (...) {
        DropTree();
        throw;
    }
    Build3D();
}

/// Nodes own nothing outside of the pool, so the old tree goes without a walk, and the new one takes its memory over.
void TerrainLod::Build3D()
{
    UnlinkTree();
    Nodes.Recycle();
    try {
        Root = NewNode(*RootCorner);
        Root->Merge(*RootCorner);
        Root->ComputeErrors(*RootCorner);
    } catch (...) {
        DropTree();
        throw;
    }
    Nodes.ReleaseSpare();
}

void TerrainLod::ForgetSource() noexcept
{
    DropTree();
    Source = HeightSource();
}

static_assert(sizeof(QuadNode) == 112 || sizeof(void*) != 8, "a terrain has a node for every three samples");

void TerrainLod::DropTree() noexcept
{
    UnlinkTree();
    Nodes.Release();
}

void TerrainLod::UnlinkTree() noexcept
{
    Root = nullptr;
    RootCorner->Node = nullptr;
    RootDue = Odometer::kDue;
}

QuadNode* TerrainLod::NewNode(QuadCorner& corner)
{
    return new (Nodes.Allocate()) QuadNode(this, corner);
}

void TerrainLod::FreeNode(QuadNode* node) noexcept
{
    node->~QuadNode();
    Nodes.Free(node);
}

void TerrainLod::SetTranslation3D(float x, float y, float z)
{
    Translation[0] = x;
    Translation[1] = y;
    Translation[2] = z;
}

void TerrainLod::SetGLPolygonMode(std::uint32_t face, std::uint32_t mode)
{
    PolygonFace = face;
    PolygonFill = mode;
}

void TerrainLod::SetTextureDetailTiling(const float* x, const float* y)
{
    if (x)
        TilingX = *x;
    if (y)
        TilingY = *y;
}

void TerrainLod::GetTextureDetailTiling(float* x, float* y) const
{
    if (x)
        *x = TilingX;
    if (y)
        *y = TilingY;
}
