#include "platform/gl/gl.h"
#include "services/camera_object.h"
#include "services/elevation_matrix.h"
#include "surface/co_tessara.h"
#include "terrain/terrain_lod.h"

namespace {

constexpr float kInitialElevation = 0.05f;  // 0x3D4CCCCD

/// What a camera says of one frame.
struct CameraView {
    explicit CameraView(IUnknown* cameraobj)
    {
        auto* camera = static_cast<ICameraObject*>(cameraobj);
        camera->GetFrustum(&frustum);
        camera->GetPosition(position);
    }
    TerrainFrustum* frustum = nullptr;
    float position[3] = {};
};

}  // namespace

HRESULT CoTessara::SetLOD(float f)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->SetLOD(f);
    return S_OK;
}

HRESULT CoTessara::GetLOD(float* f)
{
    if (!f)
        return E_POINTER;
    if (!m_pTerrain)
        return E_FAIL;
    *f = m_pTerrain->GetLOD();
    return S_OK;
}

HRESULT CoTessara::SetElevationScale(float f)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->SetElevationScale(f);
    m_elevationScale = f;
    return S_OK;
}

HRESULT CoTessara::SetSize(int Width, int Height)
{
    m_matrixWidth = Width;
    m_matrixHeight = Height;
    return S_OK;
}

HRESULT CoTessara::SetTranslation3D(float x, float y, float z)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->SetTranslation3D(x, y, z);
    return S_OK;
}

HRESULT CoTessara::GetTranslation(float* t)
{
    if (!t)
        return E_POINTER;
    if (!m_pTerrain)
        return E_FAIL;
    for (int axis = 0; axis < 3; ++axis)
        t[axis] = m_pTerrain->GetTranslation()[axis];
    return S_OK;
}

HRESULT CoTessara::SetRenderMode(TESSARA_RENDER_MODE mode)
{
    if (!m_pTerrain || (mode != TESSARA_RENDER_MODE_NORMAL && mode != TESSARA_RENDER_MODE_REALTIME))
        return E_FAIL;
    m_pTerrain->SetRenderMode(mode == TESSARA_RENDER_MODE_REALTIME ? 1 : 0);
    return S_OK;
}

HRESULT CoTessara::SetGLPolygonMode(UINT face, UINT mode)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->SetGLPolygonMode(face, mode);
    return S_OK;
}

HRESULT CoTessara::UseColor(LONG b)
{
    if (!m_pTerrain)
        return E_FAIL;
    m_pTerrain->UseColor(b != 0);
    return S_OK;
}

HRESULT CoTessara::InitMatrix()
{
    if (!m_pMatrix || m_matrixWidth == 0 || m_matrixHeight == 0)
        return E_FAIL;
    // The tree points at the cells that go now.
    if (m_pTerrain)
        m_pTerrain->ForgetSource();
    m_pMatrix->BeginUpdate(0);
    m_pMatrix->SetHeight(m_matrixHeight);
    m_pMatrix->SetWidth(m_matrixWidth);
    m_pMatrix->AllocateCells();
    for (LONG y = 0; y < m_matrixHeight; ++y) {
        for (LONG x = 0; x < m_matrixWidth; ++x) {
            ComPtr<IElevationCell> cell;
            m_pMatrix->GetCell(x, y, cell.Out());
            if (cell)
                cell->SetElevation(kInitialElevation);
        }
    }
    m_pMatrix->EndUpdate(0);
    return S_OK;
}

HRESULT CoTessara::InitQuadTree()
{
    if (!m_pMatrix || !m_pKvo || !m_pTerrain)
        return E_FAIL;
    LONG width = 0;
    LONG height = 0;
    ElevationElement* grid = nullptr;
    ElevationPalette* palette = nullptr;
    m_pMatrix->GetWidth(&width);
    m_pMatrix->GetHeight(&height);
    m_pMatrix->GetGrid(&grid);
    m_pMatrix->GetPalette(&palette);

    HeightSource source;
    source.Grid = grid;
    source.Width = width;
    source.Height = height;
    source.Stride = width;
    source.Palette = palette;
    return Guard(
        [&] {
            m_pTerrain->InitQuadTree(source);
            return S_OK;
        },
        E_FAIL);
}

HRESULT CoTessara::Build3D()
{
    if (!m_pTerrain)
        return E_FAIL;
    Guard([this] {
        m_pTerrain->Build3D();
        return S_OK;
    });
    return S_OK;
}

HRESULT CoTessara::Draw3D(IUnknown* cameraobj)
{
    if (!m_pTerrain)
        return E_FAIL;
    if (!cameraobj)
        return S_OK;
    GLint modes[2] = {0, 0};
    glGetIntegerv(GL_POLYGON_MODE, modes);
    const CameraView view(cameraobj);
    m_pTerrain->Draw(view.position[0], view.position[1], view.position[2], view.frustum);
    glPolygonMode(GL_FRONT, static_cast<GLenum>(modes[0]));
    glPolygonMode(GL_BACK, static_cast<GLenum>(modes[1]));
    return S_OK;
}

HRESULT CoTessara::GetRenderedPolygons(BSTR strFileName, IUnknown* cameraobj)
{
    if (!m_pTerrain)
        return E_FAIL;
    if (!cameraobj)
        return S_OK;
    const CameraView view(cameraobj);
    Guard([&] {
        const std::string fileName = tessara::NarrowText(strFileName);
        m_pTerrain->DumpPolygons(fileName.c_str(), view.position[0], view.position[1], view.position[2], view.frustum);
        return S_OK;
    });
    return S_OK;
}
