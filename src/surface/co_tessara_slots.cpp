#include "platform/gl/gl.h"
#include "services/elevation_matrix.h"
#include "services/kvo_host.h"
#include "services/texture_mgr.h"
#include "surface/co_tessara.h"
#include "terrain/terrain_lod.h"

#include <utility>

namespace {

void CopyOut(const std::string& text, BSTR* out)
{
    if (!out)
        return;
    *out = nullptr;
    Guard([&] {
        *out = tessara::MakeBstr(text);
        return S_OK;
    });
}

void CopyIn(std::string& field, BSTR text)
{
    Guard([&] {
        field = tessara::NarrowText(text);
        return S_OK;
    });
}

}  // namespace

ComPtr<ITextureMgr> CoTessara::HostTextures() const
{
    ComPtr<ITextureMgr> textures;
    if (m_pKvo)
        m_pKvo->GetTextureMgr(textures.Out());
    return textures;
}

void CoTessara::ActivateOnUnit(ULONG id, UINT unit) const
{
    const ComPtr<ITextureMgr> textures = HostTextures();
    if (!textures)
        return;
    if (textures->HasMultitexture() != 0)
        textures->SelectTextureUnit(unit);
    glEnable(GL_TEXTURE_2D);
    textures->BindTexture(id);
}

HRESULT CoTessara::ActivateSourceTexture()
{
    if (m_textureId[Source] == 0)
        return E_FAIL;
    ActivateOnUnit(m_textureId[Source], GL_TEXTURE0_ARB);
    return S_OK;
}

HRESULT CoTessara::ActivateDetailTexture()
{
    ActivateOnUnit(m_textureId[Detail], GL_TEXTURE1_ARB);
    return S_OK;
}

HRESULT CoTessara::ActivateCanvasTexture()
{
    const ComPtr<ITextureMgr> textures = HostTextures();
    if (!textures)
        return E_FAIL;
    BindCanvas(*textures);
    return S_OK;
}

bool CoTessara::BindCanvas(ITextureMgr& textures) const
{
    textures.ResetTextureUnit();
    return SUCCEEDED(textures.BindTexture(m_textureId[Canvas]));
}

HRESULT CoTessara::Draw2D(int, int, int, int)
{
    if (!m_pKvo || !m_pMatrix)
        return E_FAIL;
    const ComPtr<ITextureMgr> textures = HostTextures();
    if (!textures)
        return E_FAIL;
    LONG columns = 0;
    LONG rows = 0;
    m_pMatrix->GetWidth(&columns);
    m_pMatrix->GetHeight(&rows);
    if (columns == 0 || rows == 0)
        return E_FAIL;

    const float right = static_cast<float>(columns) + m_canvasLeft;
    const float bottom = static_cast<float>(rows) + m_canvasTop;
    textures->BindTexture(m_textureId[Canvas]);
    glPushMatrix();
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 0.0f);
    glVertex3f(m_canvasLeft, bottom, 0.0f);
    glTexCoord2f(1.0f, 0.0f);
    glVertex3f(right, bottom, 0.0f);
    glTexCoord2f(1.0f, 1.0f);
    glVertex3f(right, m_canvasTop, 0.0f);
    glTexCoord2f(0.0f, 1.0f);
    glVertex3f(m_canvasLeft, m_canvasTop, 0.0f);
    glEnd();
    glPopMatrix();
    textures->UnbindTexture();
    return S_OK;
}

HRESULT CoTessara::SetCanvasOffset(float left, float top)
{
    m_canvasLeft = left;
    m_canvasTop = top;
    return S_OK;
}

HRESULT CoTessara::UseTextureSource(LONG b)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->UseTextureSource(b != 0);
    return S_OK;
}

HRESULT CoTessara::UseTextureDetail(LONG b)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->UseTextureDetail(b != 0);
    return S_OK;
}

HRESULT CoTessara::IsUsingTextureSource(LONG* b)
{
    if (!b)
        return E_POINTER;
    if (!m_pTerrain)
        return E_FAIL;
    *b = m_pTerrain->IsUsingTextureSource() ? 1 : 0;
    return S_OK;
}

HRESULT CoTessara::IsUsingTextureDetail(LONG* b)
{
    if (!b)
        return E_POINTER;
    if (!m_pTerrain)
        return E_FAIL;
    *b = m_pTerrain->IsUsingTextureDetail() ? 1 : 0;
    return S_OK;
}

HRESULT CoTessara::SetTextureDetailFromDB(BSTR name, BSTR table, VARIANT* v)
{
    if (!m_pKvo)
        return E_FAIL;
    return Guard(
        [&] {
            std::string newName = tessara::NarrowText(name);
            std::string newTable = tessara::NarrowText(table);
            std::string newDatabase = v ? "USERDB" : "APPDB";
            const std::uint32_t old = m_textureId[Detail];
            ULONG id = old;
            const HRESULT result = m_pKvo->LoadTextureFromDB(name, table, &id, v);
            if (SUCCEEDED(result)) {
                m_textureId[Detail] = id;
                m_detailName = std::move(newName);
                m_detailTable = std::move(newTable);
                if (old != 0 && m_pTextureMgr)
                    m_pTextureMgr->ReleaseTexture(old);
                m_database = std::move(newDatabase);
            }
            if (m_pTextureMgr)
                m_pTextureMgr->UnbindTexture();
            return result;
        },
        E_FAIL);
}

HRESULT CoTessara::GetDBTextureDetailName(BSTR* name, BSTR* table)
{
    CopyOut(m_detailName, name);
    CopyOut(m_detailTable, table);
    return S_OK;
}

HRESULT CoTessara::SetTextureDetailTiling(float* x, float* y)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->SetTextureDetailTiling(x, y);
    return S_OK;
}

HRESULT CoTessara::GetTextureDetailTiling(float* x, float* y)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->GetTextureDetailTiling(x, y);
    return S_OK;
}

HRESULT CoTessara::SetTextureDetailRGBGamma(int gamma)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->SetTextureDetailRGBGamma(gamma);
    return S_OK;
}

HRESULT CoTessara::GetTextureDetailRGBGamma(int* gamma)
{
    if (!gamma)
        return E_POINTER;
    if (!m_pTerrain)
        return E_FAIL;
    *gamma = m_pTerrain->GetTextureDetailRGBGamma();
    return S_OK;
}

HRESULT CoTessara::GetDataBaseSource(BSTR* database)
{
    CopyOut(m_database, database);
    return S_OK;
}

HRESULT CoTessara::SetDataBaseSource(BSTR database)
{
    CopyIn(m_database, database);
    return S_OK;
}

HRESULT CoTessara::SetUserTextureName(BSTR TextureName)
{
    CopyIn(m_userTextureName, TextureName);
    return S_OK;
}
