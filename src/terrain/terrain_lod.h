#pragma once

#include "platform/gl/gl.h"
#include "terrain/height_source.h"
#include "terrain/node_pool.h"
#include "terrain/odometer.h"
#include "terrain/quad_node.h"

#include <cstdint>

class CTextureMgrImp;
class TerrainFrustum;

/// A terrain: its quadtree, its settings, and the one set of arrays through which every node is drawn. All operations
/// run on the thread that owns the current OpenGL context. Without a tree, drawing and dumping do nothing.
class TerrainLod {
public:
    TerrainLod();
    TerrainLod(const TerrainLod&) = delete;
    TerrainLod& operator=(const TerrainLod&) = delete;
    virtual ~TerrainLod();

    /// Builds a new tree at full detail. The grid and the palette of the source stay in use as long as the tree lives.
    /// \throws std::bad_alloc; std::length_error for a side above 2^30. After a failure there is no tree.
    void InitQuadTree(HeightSource source);

    /// Builds the tree again from the source of the last InitQuadTree. Failures as there.
    void Build3D();

    /// Forgets the source, whose grid and palette may then go, and the tree built on it.
    void ForgetSource() noexcept;

    /// Adapts the tree to the viewer, one step. \throws std::bad_alloc, with a sound tree that is not fully adapted
    void Update(const Viewer& viewer);

    /// One frame: adapts the tree to the viewer and draws it. When memory is short, the frame shows the tree as far as
    /// it was adapted. OpenGL state afterwards: blending, the arrays and 2D texturing off, the blend function, the
    /// polygon mode, the texture environments and unit 1's texture matrix as the pass set them.
    /// \param frustum in draw space; null draws nothing
    void Draw(float x, float y, float z, const TerrainFrustum* frustum);

    /// Adapts the tree as Draw does and writes the triangles of the frame to a text file.
    /// \param fileName UTF-8 \return false when there is no tree; true otherwise, also when the file can't be written
    bool DumpPolygons(const char* fileName, float x, float y, float z, const TerrainFrustum* frustum);

    /// The level of detail tests multiply errors with the factor times the elevation scale of this moment.
    void SetLOD(float factor)
    {
        LodFactor = factor;
        ScaledLodFactor = factor * ElevationScale;
    }
    float GetLOD() const { return LodFactor; }

    /// Leaves ScaledLodFactor as it is until the next SetLOD.
    void SetElevationScale(float scale) { ElevationScale = scale; }
    float GetElevationScale() const { return ElevationScale; }

    void SetTranslation3D(float x, float y, float z);
    const float* GetTranslation() const { return Translation; }

    void SetRenderMode(std::int32_t realTime) { RealTime = realTime; }
    std::int32_t GetRenderMode() const { return RealTime; }

    /// Texture service and the surface's array of three texture ids, neither owned. Texturing needs both.
    void SetTextureMgr(CTextureMgrImp* textures) { TextureMgr = textures; }
    void SetTextureIds(const std::uint32_t* ids) { TextureIds = ids; }

    void UseTextureSource(bool use) { UseSource = use; }
    bool IsUsingTextureSource() const { return UseSource; }
    void UseTextureDetail(bool use) { UseDetail = use; }
    bool IsUsingTextureDetail() const { return UseDetail; }
    void UseColor(bool use) { UseVertexColor = use; }
    bool IsUsingColor() const { return UseVertexColor; }
    void SetGLPolygonMode(std::uint32_t face, std::uint32_t mode);

    /// Each pointer may be null and is then left out.
    void SetTextureDetailTiling(const float* x, const float* y);
    void GetTextureDetailTiling(float* x, float* y) const;

    void SetTextureDetailRGBGamma(std::int32_t scale) { RgbScale = scale; }
    std::int32_t GetTextureDetailRGBGamma() const { return RgbScale; }

    /// Makes a node from its corner record. \throws std::bad_alloc
    QuadNode* NewNode(QuadCorner& corner);

    /// Frees a node with its subtree.
    void FreeNode(QuadNode* node) noexcept;

    QuadNode* Root = nullptr;  ///< owned; null until InitQuadTree and after a failed build
    QuadCorner* RootCorner;    ///< owned; outlives every tree, its corner heights are 0.0 for ever
    HeightSource Source;       ///< copy of the argument of InitQuadTree
    float LodFactor = 150.0f;  ///< the value of SetLOD
    CTextureMgrImp* TextureMgr = nullptr;
    float ScaledLodFactor = 150.0f;  ///< what the level of detail tests multiply with
    float VertexArray[9][3];         ///< the patch being drawn: tree units, y unscaled
    float NormalArray[9][3];
    std::uint8_t ColorArray[9][4];  ///< red, green, blue, alpha
    float TexCoordArray[9][2];
    std::uint8_t IndexArray[24];
    float ElevationScale = 60.0f;               ///< drawn height of the normalised elevation 1.0, applied by the matrix
    float Translation[3] = {};                  ///< offset in draw space, applied by the matrix
    const std::uint32_t* TextureIds = nullptr;  ///< source, detail, canvas
    bool UseSource = false;
    bool UseDetail = false;
    bool UseVertexColor = true;
    std::uint32_t PolygonFace = GL_FRONT_AND_BACK;
    std::uint32_t PolygonFill = GL_FILL;
    float TilingX = 16.0f;  ///< repeats of the detail texture across the terrain
    float TilingY = 16.0f;
    std::int32_t RealTime = 0;  ///< 1: active nodes read their heights again at each update
    std::int32_t RgbScale = 2;  ///< brightness of the detail texture
    NodePool Nodes;             ///< where the nodes live

    Odometer Travel;                             ///< the viewer's way through the updates
    Odometer::Reading RootDue = Odometer::kDue;  ///< as QuadNode::ChildDue, for the root

    /// Makes every update visit all active nodes and every error pass the whole subtree. The results are the same: it
    /// is for comparison.
    bool WalkEverything = false;

private:
    void DropTree() noexcept;
    void UnlinkTree() noexcept;
    void UpdateForFrame(const Viewer& viewer) noexcept;
    bool HasMultitexture() const;
    std::uint32_t TextureId(std::uint32_t slot) const { return TextureIds ? TextureIds[slot] : 0; }
    void SetUpArrays(bool multitexture);
    void BindSourceTexture(bool multitexture);
    void BindDetailTexture();
    void EmitTree(const TerrainFrustum* frustum);
    void TakeDownState(bool multitexture);
    bool DumpToFile(const char* fileName, const TerrainFrustum* frustum);
};
