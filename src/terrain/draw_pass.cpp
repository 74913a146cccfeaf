#include "platform/system/text_file.h"
#include "terrain/patch_writer.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"
#include "textures/ctexture_mgr_imp.h"

#include <cstdio>
#include <memory>
#include <new>

void TerrainLod::Draw(float x, float y, float z, const TerrainFrustum* frustum)
{
    if (!Root)
        return;
    UpdateForFrame({x, y, z});
    const bool multitexture = HasMultitexture();
    glPushMatrix();
    SetUpArrays(multitexture);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTranslatef(Translation[0], Translation[1], Translation[2]);
    glScalef(1.0f, ElevationScale, 1.0f);
    glPolygonMode(PolygonFace, PolygonFill);
    if (UseSource && TextureId(0) != 0)
        BindSourceTexture(multitexture);
    if (UseDetail && multitexture && TextureId(1) != 0)
        BindDetailTexture();
    EmitTree(frustum);
    TakeDownState(multitexture);
}

/// A failed allocation ends the update early. The tree is sound then, and the next frame goes on from there.
void TerrainLod::UpdateForFrame(const Viewer& viewer) noexcept
{
    try {
        Update(viewer);
    } catch (const std::bad_alloc&) {
    }
}

bool TerrainLod::HasMultitexture() const
{
    return TextureMgr && TextureMgr->IsMultitextureSupported();
}

void TerrainLod::SetUpArrays(bool multitexture)
{
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, VertexArray);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 0, NormalArray);
    if (UseVertexColor) {
        glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(4, GL_UNSIGNED_BYTE, 0, ColorArray);
    } else {
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    }
    if (UseSource) {
        if (multitexture)
            TextureMgr->clientActiveTexture(GL_TEXTURE0_ARB);
        else
            glEnable(GL_TEXTURE_2D);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, TexCoordArray);
    }
    if (UseDetail && multitexture) {
        TextureMgr->clientActiveTexture(GL_TEXTURE1_ARB);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, TexCoordArray);
    }
}

/// The source texture multiplies the vertex colour.
void TerrainLod::BindSourceTexture(bool multitexture)
{
    if (multitexture)
        TextureMgr->activeTexture(GL_TEXTURE0_ARB);
    glEnable(GL_TEXTURE_2D);
    if (TextureMgr)
        TextureMgr->BindTexture(TextureId(0));
    glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}

/// The detail texture adds its signed departure from mid-grey, and the sum is multiplied with RgbScale. The texture
/// matrix repeats it across the terrain.
void TerrainLod::BindDetailTexture()
{
    TextureMgr->activeTexture(GL_TEXTURE1_ARB);
    TextureMgr->BindTexture(TextureId(1));
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_COMBINE_ARB);
    glTexEnvi(GL_TEXTURE_ENV, GL_COMBINE_RGB_ARB, GL_ADD_SIGNED_ARB);
    glTexEnvi(GL_TEXTURE_ENV, GL_RGB_SCALE_ARB, RgbScale);
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glScalef(TilingX, TilingY, 1.0f);
    glMatrixMode(GL_MODELVIEW);
}

/// A source without data has no vertices to give.
void TerrainLod::EmitTree(const TerrainFrustum* frustum)
{
    if (!frustum || !Source.HasData())
        return;
    PatchWriter patch(*this);
    Root->Emit(*RootCorner, TerrainFrustum::Crossing, frustum, patch);
}

void TerrainLod::TakeDownState(bool multitexture)
{
    glDisable(GL_BLEND);
    if ((UseDetail || UseSource) && multitexture) {
        for (const GLenum unit : {GL_TEXTURE1_ARB, GL_TEXTURE0_ARB}) {
            TextureMgr->activeTexture(unit);
            TextureMgr->clientActiveTexture(unit);
            glDisable(GL_TEXTURE_2D);
            glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        }
    } else {
        glDisable(GL_TEXTURE_2D);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    if (UseVertexColor)
        glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    glPopMatrix();
}

bool TerrainLod::DumpPolygons(const char* fileName, float x, float y, float z, const TerrainFrustum* frustum)
{
    if (!Root)
        return false;
    UpdateForFrame({x, y, z});
    glPushMatrix();
    DumpToFile(fileName, frustum);
    glPopMatrix();
    return true;
}

bool TerrainLod::DumpToFile(const char* fileName, const TerrainFrustum* frustum)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(tessara::CreateTextFile(fileName), &std::fclose);
    if (!file)
        return false;
    if (!frustum || !Source.HasData())
        return true;
    PatchWriter patch(*this);
    Root->DumpTriangles(*RootCorner, TerrainFrustum::Crossing, frustum, patch, file.get());
    return true;
}
