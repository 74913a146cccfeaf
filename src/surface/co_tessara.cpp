#include "surface/co_tessara.h"

#include "services/elevation_matrix.h"
#include "services/kvo_host.h"
#include "services/texture_mgr.h"
#include "terrain/terrain_lod.h"
#include "textures/elevation_palette.h"

#include <new>
#include <utility>

namespace {

/// Releases a counted field and forgets it.
template <class T>
void ReleaseField(T*& field)
{
    if (field)
        std::exchange(field, nullptr)->Release();
}

}  // namespace

HRESULT CoTessara::InitServer()
{
    for (std::uint32_t& id : m_textureId)
        id = 0;
    delete std::exchange(m_pTerrain, nullptr);
    Guard([this] {
        m_pTerrain = new TerrainLod;
        return S_OK;
    });
    return S_OK;
}

HRESULT CoTessara::SetKVO(IUnknown* kvo)
{
    ReleaseField(m_pKvo);
    m_pKvo = static_cast<IKvoHost*>(kvo);
    if (!m_pKvo)
        return S_OK;
    m_pKvo->AddRef();
    if (!m_pTextureMgr)
        m_pKvo->GetTextureMgr(&m_pTextureMgr);
    if (m_pTextureMgr && m_pTerrain) {
        CTextureMgrImp* textures = nullptr;
        m_pTextureMgr->GetImplementation(&textures);
        m_pTerrain->SetTextureMgr(textures);
        m_pTerrain->SetTextureIds(m_textureId);
    }
    Guard([this] {
        for (std::string& key : m_textureKey) {
            if (!key.empty())
                continue;
            tessara::BstrHolder fresh;
            m_pKvo->NewElementKey(fresh.Out());
            key = fresh.Narrow();
        }
        return S_OK;
    });
    return S_OK;
}

HRESULT CoTessara::StopServer()
{
    ReleaseField(m_pMatrix);
    delete std::exchange(m_pTerrain, nullptr);
    if (m_pTextureMgr) {
        for (std::uint32_t& id : m_textureId) {
            if (id != 0)
                m_pTextureMgr->ReleaseTexture(id);
        }
        for (std::uint32_t& id : m_textureId)
            id = 0;
    }
    // Both are forgotten too, so that a call out of order fails instead of using a host that may be gone.
    ReleaseField(m_pTextureMgr);
    ReleaseField(m_pKvo);
    return S_OK;
}

HRESULT CoTessara::SetMatrix(IUnknown* ptr)
{
    if (!m_pMatrix && ptr) {
        m_pMatrix = static_cast<IElevationMatrix*>(ptr);
        m_pMatrix->AddRef();
    }
    return S_OK;
}

std::unique_ptr<ElevationPalette> CoTessara::NewPalette() const
{
    return std::make_unique<ElevationPalette>();
}

HRESULT CoTessara::GetMatrix(IUnknown** matrix)
{
    if (!matrix)
        return E_POINTER;
    *matrix = m_pMatrix;
    return S_OK;
}

HRESULT CoTessara::BuildTextureSrc()
{
    return E_FAIL;
}

HRESULT CoTessara::BlendTextureDBToSource(BSTR, BSTR, IUnknown*)
{
    return E_FAIL;
}

HRESULT CoTessara::BlendTextureDBToSourceRegion(BSTR, BSTR, VARIANT)
{
    return E_FAIL;
}
