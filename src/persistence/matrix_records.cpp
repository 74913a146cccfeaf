#include "persistence/saved_place.h"
#include "services/elevation_matrix.h"
#include "surface/co_tessara.h"
#include "terrain/terrain_lod.h"
#include "textures/elevation_palette.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

using tessara::Reading;

namespace {

enum MatrixValue : std::size_t { MinElevation, MaxElevation, Width, Height, Data };

constexpr tessara::SavedValue kMatrixValues[] = {
    {"MIN_ELEVATION", tessara::kFloats, tessara::kFloats}, {"MAX_ELEVATION", tessara::kFloats, tessara::kFloats},
    {"MATRIX_WIDTH", tessara::kSizes, tessara::kSizes},    {"MATRIX_HEIGHT", tessara::kSizes, tessara::kSizes},
    {"MATRIX_DATA", tessara::kFloats, tessara::kFloats},
};

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

/// What a tree can be built on: no value reaches other cells' errors or normals as infinity or as no number.
float UsableElevation(float saved)
{
    if (!std::isfinite(saved))
        return 0.0f;
    return std::clamp(saved, -tessara::kLargestElevation, tessara::kLargestElevation);
}

bool FillMatrix(IElevationMatrix& matrix, LONG width, LONG height, const std::vector<float>& elevations)
{
    matrix.BeginUpdate(0);
    const bool filled = ForEachCell(matrix, width, height, [&elevations](IElevationCell& cell, std::size_t index) {
        cell.SetElevation(UsableElevation(elevations[index]));
    });
    matrix.EndUpdate(0);
    return filled;
}

}  // namespace

HRESULT CoTessara::SerializeMatrix(IUnknown* pIParser)
{
    if (!pIParser || !m_pMatrix)
        return E_FAIL;
    LONG width = 0;
    LONG height = 0;
    m_pMatrix->GetWidth(&width);
    m_pMatrix->GetHeight(&height);
    const std::size_t size = tessara::BlockSize(width, height, sizeof(float));
    if (size == 0)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            std::vector<float> elevations(size / sizeof(float));
            tessara::SavedPlace place(pIParser, kMatrixValues);
            if (!ForEachCell(*m_pMatrix, width, height, [&elevations](IElevationCell& cell, std::size_t index) {
                    cell.GetElevation(&elevations[index]);
                }))
                return E_FAIL;
            place.Write(MinElevation, &m_minElevation, sizeof m_minElevation);
            place.Write(MaxElevation, &m_maxElevation, sizeof m_maxElevation);
            place.Write(Width, &width, sizeof width);
            place.Write(Height, &height, sizeof height);
            place.Write(Data, elevations.data(), size);
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
            tessara::SavedPlace place(pIParser, kMatrixValues);
            LONG size[2] = {0, 0};
            if (place.ReadInteger(Width, &size[0]) != Reading::Read || size[0] == 0 ||
                place.ReadInteger(Height, &size[1]) != Reading::Read || size[1] == 0)
                return E_FAIL;
            const std::size_t blockSize = tessara::BlockSize(size[0], size[1], sizeof(float));
            if (blockSize == 0)
                return E_FAIL;
            float range[2] = {m_minElevation, m_maxElevation};
            place.ReadFloats(MaxElevation, {&range[1], 1});
            place.ReadFloats(MinElevation, {&range[0], 1});

            ParserNode node = nullptr;
            const bool found = place.Find(Data, &node);
            std::vector<float> elevations(found ? blockSize / sizeof(float) : 0);
            auto palette = std::make_unique<ElevationPalette>();
            // From here on nothing of this object fails for want of memory.
            m_matrixWidth = size[0];
            m_matrixHeight = size[1];
            m_minElevation = range[0];
            m_maxElevation = range[1];
            if (!found || place.Fetch(Data, node, elevations.data()) != Reading::Read)
                return E_FAIL;
            const bool created = CreateMatrix(size[0], size[1], std::move(palette));
            if (!m_pMatrix)
                return S_OK;
            return created && FillMatrix(*m_pMatrix, size[0], size[1], elevations) ? S_OK : E_FAIL;
        },
        E_FAIL);
}

/// Makes the matrix anew, of this size and with this palette. \return false without a matrix, or with one that couldn't
/// have its cells
bool CoTessara::CreateMatrix(LONG width, LONG height, std::unique_ptr<ElevationPalette> palette)
{
    if (!m_pMatrix && FAILED(CoCreateInstance(CLSID_ElevationMatrix, nullptr, CLSCTX_INPROC_SERVER,
                                              InterfaceId<IElevationMatrix>, reinterpret_cast<void**>(&m_pMatrix))))
        return false;
    // The tree still points at the grid and the palette that go now.
    if (m_pTerrain)
        m_pTerrain->ForgetSource();
    m_pMatrix->ResetMatrix();
    m_pMatrix->SetElevationRange(m_minElevation, m_maxElevation);
    if (FAILED(m_pMatrix->SetPalette(palette.get())))
        return false;
    palette.release();  // the matrix's from now on
    m_pMatrix->BeginUpdate(0);
    m_pMatrix->SetWidth(width);
    m_pMatrix->SetHeight(height);
    const HRESULT allocated = m_pMatrix->AllocateCells();
    m_pMatrix->EndUpdate(0);
    return SUCCEEDED(allocated);
}
