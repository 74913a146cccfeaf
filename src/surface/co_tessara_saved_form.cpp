// Saving and loading: each method moves one group of values between the surface and its saved form.

#include "persistence/saved_matrix.h"
#include "persistence/saved_palette.h"
#include "persistence/saved_properties.h"
#include "persistence/saved_textures.h"
#include "services/elevation_matrix.h"
#include "services/texture_mgr.h"
#include "surface/co_tessara.h"
#include "terrain/terrain_lod.h"
#include "textures/elevation_palette.h"

#include <memory>
#include <utility>

using tessara::SavedMatrix;
using tessara::SavedPalette;
using tessara::SavedProperties;
using tessara::SavedTextures;
using tessara::SavedTexturesReader;

namespace {

/// Calls `visit` with each cell and its number in the saved order: row by row, columns fastest.
/// \return false when the matrix didn't give out one of its cells
template <class Visit>
bool ForEachCell(IElevationMatrix& matrix, LONG width, LONG height, Visit visit)
{
    bool complete = true;
    std::size_t index = 0;
    for (LONG y = 0; y < height; ++y) {
        for (LONG x = 0; x < width; ++x, ++index) {
            ComPtr<IElevationCell> cell;
            matrix.GetCell(x, y, cell.Out());
            if (cell)
                visit(*cell, index);
            else
                complete = false;
        }
    }
    return complete;
}

void FillMatrix(IElevationMatrix& matrix, const SavedMatrix& saved)
{
    matrix.BeginUpdate(0);
    ForEachCell(matrix, saved.width, saved.height,
                [&saved](IElevationCell& cell, std::size_t index) { cell.SetElevation(saved.elevations[index]); });
    matrix.EndUpdate(0);
}

ElevationPalette* PaletteOf(IElevationMatrix& matrix)
{
    ElevationPalette* palette = nullptr;
    matrix.GetPalette(&palette);
    return palette;
}

/// The pixels of a texture, as the texture service gives them.
struct ReadBack {
    ReadBack(ITextureMgr& textures, ULONG id)
    {
        textures.ResetTextureUnit();
        textures.BindTexture(id);
        void* data = nullptr;
        const HRESULT result = textures.GetTextureData(id, &image.width, &image.height, &image.bits, 0, &data);
        pixels.reset(data);
        if (FAILED(result) || !tessara::IsDepth(image.bits))
            pixels.reset();
        image.pixels = {static_cast<const BYTE*>(pixels.get()), pixels ? image.Size() : 0};
    }

    tessara::SavedImage image;
    std::unique_ptr<void, void (*)(void*)> pixels{nullptr, &CoTaskMemFree};  // null where there is none to save
};

void Take(std::string& field, std::optional<std::string>& text)
{
    if (text)
        field.swap(*text);
}

}  // namespace

HRESULT CoTessara::SerializeSurfaceProperties(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&] {
            SavedProperties saved;
            GetLOD(&saved.lod);
            GetTranslation(saved.translation);
            saved.elevationScale = m_elevationScale;
            saved.Write(*static_cast<IParser*>(pIParser));
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::LoadSerializedSurfaceProperties(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&] {
            const SavedProperties saved = SavedProperties::Read(*static_cast<IParser*>(pIParser));
            // The level of detail goes by the scale from before the load.
            SetLOD(saved.lod);
            SetTranslation3D(saved.translation[0], saved.translation[1], saved.translation[2]);
            SetElevationScale(saved.elevationScale);
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::SerializeMatrix(IUnknown* pIParser)
{
    if (!pIParser || !m_pMatrix)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            SavedMatrix saved;
            m_pMatrix->GetWidth(&saved.width);
            m_pMatrix->GetHeight(&saved.height);
            if (tessara::BlockSize(saved.width, saved.height, sizeof(float)) == 0)
                return E_FAIL;
            saved.minimum = m_minElevation;
            saved.maximum = m_maxElevation;
            saved.elevations.resize(tessara::BlockSize(saved.width, saved.height, 1));
            const auto take = [&saved](IElevationCell& cell, std::size_t index) {
                cell.GetElevation(&saved.elevations[index]);
            };
            if (!ForEachCell(*m_pMatrix, saved.width, saved.height, take))
                return E_FAIL;
            saved.Write(*static_cast<IParser*>(pIParser));
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::LoadSerializedMatrix(IUnknown* pIParser)
{
    if (!pIParser)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            SavedMatrix saved;
            const bool complete = saved.Read(*static_cast<IParser*>(pIParser));
            if (saved.width == 0)
                return E_FAIL;
            auto palette = NewPalette();
            // From here on nothing of this object fails for want of memory.
            m_matrixWidth = saved.width;
            m_matrixHeight = saved.height;
            m_minElevation = saved.minimum.value_or(m_minElevation);
            m_maxElevation = saved.maximum.value_or(m_maxElevation);
            if (!complete)
                return E_FAIL;
            CreateMatrix(saved.width, saved.height, std::move(palette));
            if (m_pMatrix)
                FillMatrix(*m_pMatrix, saved);
            return S_OK;
        },
        E_FAIL);
}

/// Makes the matrix anew, of this size and with this palette. One that can't have its cells has none afterwards.
void CoTessara::CreateMatrix(LONG width, LONG height, std::unique_ptr<ElevationPalette> palette)
{
    if (!m_pMatrix && FAILED(CoCreateInstance(CLSID_ElevationMatrix, nullptr, CLSCTX_INPROC_SERVER,
                                              InterfaceId<IElevationMatrix>, reinterpret_cast<void**>(&m_pMatrix))))
        return;
    // The tree still points at the grid and the palette that go now.
    if (m_pTerrain)
        m_pTerrain->ForgetSource();
    m_pMatrix->ResetMatrix();
    m_pMatrix->SetElevationRange(m_minElevation, m_maxElevation);
    if (SUCCEEDED(m_pMatrix->SetPalette(palette.get())))
        palette.release();  // the matrix's from now on
    m_pMatrix->BeginUpdate(0);
    m_pMatrix->SetWidth(width);
    m_pMatrix->SetHeight(height);
    m_pMatrix->AllocateCells();
    m_pMatrix->EndUpdate(0);
}

HRESULT CoTessara::SerializePalette(IUnknown* pIParser)
{
    if (!pIParser)
        return E_FAIL;
    if (!m_pMatrix)
        return S_OK;
    const ElevationPalette* const palette = PaletteOf(*m_pMatrix);
    if (!palette)
        return E_FAIL;
    return Guard(
        [&] {
            SavedPalette::Of(*palette).Write(*static_cast<IParser*>(pIParser));
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::LoadSerializedPalette(IUnknown* pIParser)
{
    if (!pIParser || !m_pMatrix)
        return E_FAIL;
    ElevationPalette* const palette = PaletteOf(*m_pMatrix);
    if (!palette)
        return E_FAIL;
    return Guard(
        [&] {
            SavedPalette saved;
            if (saved.Read(*static_cast<IParser*>(pIParser)))
                saved.GiveTo(*palette);
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::SerializeTextures(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            SavedTextures saved;
            saved.detail = {m_detailName, m_detailTable, m_database, m_userTextureName};
            saved.settings = TextureSettings();
            // An empty slot would be described by whichever texture happens to be bound.
            std::optional<ReadBack> source;
            if (m_pTextureMgr && m_textureId[Source] != 0)
                source.emplace(*m_pTextureMgr, m_textureId[Source]);
            if (source && source->pixels) {
                const tessara::SavedImage& image = saved.source.emplace(source->image);
                if (image.pixels.empty() && image.width != 0 && image.height != 0)
                    return E_FAIL;
            }
            saved.Write(*static_cast<IParser*>(pIParser));
            return S_OK;
        },
        E_FAIL);
}

tessara::SavedTextureSettings CoTessara::TextureSettings()
{
    LONG usingDetail = 0;
    LONG usingSource = 0;
    float tiling[2] = {};
    int gamma = 0;
    IsUsingTextureDetail(&usingDetail);
    IsUsingTextureSource(&usingSource);
    GetTextureDetailTiling(&tiling[0], &tiling[1]);
    GetTextureDetailRGBGamma(&gamma);
    return {usingDetail, usingSource, tiling[0], tiling[1], gamma};
}

HRESULT CoTessara::LoadSerializedTextures(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            SavedTexturesReader reader(*static_cast<IParser*>(pIParser));
            if (FAILED(LoadSource(reader)))
                return E_FAIL;
            // From here on nothing fails for want of memory but the detail texture, and its failure has an answer.
            tessara::SavedDetail detail = reader.ReadDetail();
            Take(m_detailName, detail.key);
            Take(m_userTextureName, detail.displayName);
            Take(m_detailTable, detail.table);
            Take(m_database, detail.database);
            const bool hasDetail = !m_detailTable.empty() && !m_detailName.empty();
            if (hasDetail && FAILED(LoadDetail()))
                TextureDetailDlg();
            TakeTextureSettings(reader.ReadSettings());
            return hasDetail ? S_FALSE : S_OK;
        },
        E_FAIL);
}

/// Puts the saved image into the source slot. Without one the slot stays as it is.
HRESULT CoTessara::LoadSource(SavedTexturesReader& reader)
{
    tessara::SavedImage image;
    if (!reader.FindSource(image) || !reader.ReadSource(image))
        return S_OK;
    if (!m_pTextureMgr)
        return E_FAIL;
    const HRESULT result = CreateSlotTexture(Source, image.width, image.height, image.bits, image.pixels.data());
    m_pTextureMgr->UnbindTexture();
    return result;
}

/// Takes the detail texture that the fields name from its database.
HRESULT CoTessara::LoadDetail()
{
    return Guard([this] {
        const tessara::BstrHolder name(m_detailName);
        const tessara::BstrHolder table(m_detailTable);
        VARIANT user;
        VariantInit(&user);
        return SetTextureDetailFromDB(name.Get(), table.Get(), m_database == "USERDB" ? &user : nullptr);
    });
}

void CoTessara::TakeTextureSettings(const tessara::SavedTextureSettings& saved)
{
    float tiling = 0.0f;
    if (saved.tilingX)
        SetTextureDetailTiling(&(tiling = *saved.tilingX), nullptr);
    if (saved.tilingY)
        SetTextureDetailTiling(nullptr, &(tiling = *saved.tilingY));
    if (saved.rgbGamma)
        SetTextureDetailRGBGamma(*saved.rgbGamma);
    if (saved.usingDetail)
        UseTextureDetail(*saved.usingDetail);
    if (saved.usingSource)
        UseTextureSource(*saved.usingSource);
}
