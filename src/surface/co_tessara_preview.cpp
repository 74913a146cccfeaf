#include "platform/gl/mipmap_slack.h"
#include "platform/gl/unpadded_rows.h"
#include "services/elevation_matrix.h"
#include "services/kvo_host.h"
#include "services/progress_window.h"
#include "services/texture_mgr.h"
#include "surface/co_tessara.h"
#include "textures/elevation_palette.h"

#include <utility>
#include <vector>

namespace {

constexpr LONG kCanvasBits = 24;
constexpr LONG kBlankBits = 32;

/// Runs a task of the host's progress display, where there is one.
class ProgressTask {
public:
    ProgressTask(IKvoHost* host, const char* title, LONG steps)
    {
        if (host)
            host->GetProgressWindow(window_.Out());
        if (!window_)
            return;
        const tessara::BstrHolder text(title);
        window_->SetProgressTitle(text.Get());
        window_->SetProgressRange(steps);
        window_->BeginProgress(1);
    }
    ProgressTask(const ProgressTask&) = delete;
    ProgressTask& operator=(const ProgressTask&) = delete;
    ~ProgressTask()
    {
        if (window_)
            window_->EndProgress(1);
    }
    IProgressWindow* Window() const { return window_.Get(); }

private:
    ComPtr<IProgressWindow> window_;
};

}  // namespace

/// Makes the texture of a slot that the surface fills itself, under the surface's name and the slot's key. The slot's
/// old texture goes first: as long as the pair of names is known, it stands for the old image. \throws std::bad_alloc,
/// with the slot as it was
HRESULT CoTessara::CreateSlotTexture(Slot slot, LONG width, LONG height, LONG bitsPerPixel, const void* pixels)
{
    const tessara::BstrHolder element(m_elementName);
    const tessara::BstrHolder key(m_textureKey[slot]);
    if (m_textureId[slot] != 0)
        m_pTextureMgr->ReleaseTexture(std::exchange(m_textureId[slot], 0));
    m_pTextureMgr->SetElementName(element.Get());
    m_pTextureMgr->SetTextureName(key.Get());
    ULONG id = 0;
    const HRESULT result = m_pTextureMgr->CreateTexture(width, height, bitsPerPixel, pixels, &id);
    m_textureId[slot] = id;
    return result;
}

HRESULT CoTessara::CreateTextureSurface2D()
{
    if (!m_pMatrix)
        return E_FAIL;
    LONG width = 0;
    LONG height = 0;
    m_pMatrix->GetWidth(&width);
    m_pMatrix->GetHeight(&height);
    if (width <= 0 || height <= 0)
        return E_FAIL;
    ElevationPalette* palette = nullptr;
    m_pMatrix->GetPalette(&palette);
    if (!palette || !m_pTextureMgr)
        return E_FAIL;
    return Guard(
        [&] {
            std::vector<BYTE> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3 +
                                     tessara::kMipmapSlack);
            {
                const ProgressTask task(m_pKvo, "Creating terrain 2D preview ....", height);
                PaintCanvasPixels(pixels.data(), width, height, *palette, task.Window());
                if (m_textureId[Canvas] == 0)
                    CreateSlotTexture(Canvas, width, height, kCanvasBits, pixels.data());
                else
                    RepaintCanvas(width, height, pixels.data());
            }
            m_pTextureMgr->UnbindTexture();
            return S_OK;
        },
        E_FAIL);
}

/// Gives the canvas texture another picture. Where it can't be bound, it keeps the old one: what else is bound isn't
/// the surface's to paint over.
void CoTessara::RepaintCanvas(LONG width, LONG height, const BYTE* pixels) const
{
    const ComPtr<ITextureMgr> textures = HostTextures();
    if (!textures || !BindCanvas(*textures))
        return;
    const tessara::UnpaddedRows rows(GL_UNPACK_ALIGNMENT);
    gluBuild2DMipmaps(GL_TEXTURE_2D, 3, width, height, GL_BGR_EXT, GL_UNSIGNED_BYTE, pixels);
}

/// Paints each cell through the palette: blue, green, red, the last row of the matrix first.
void CoTessara::PaintCanvasPixels(BYTE* pixels, LONG width, LONG height, const ElevationPalette& palette,
                                  IProgressWindow* progress) const
{
    for (LONG y = 0; y < height; ++y) {
        BYTE* pixel = pixels + static_cast<std::ptrdiff_t>(height - 1 - y) * width * 3;
        for (LONG x = 0; x < width; ++x, pixel += 3) {
            float elevation = 0.0f;
            ComPtr<IElevationCell> cell;
            m_pMatrix->GetCell(x, y, cell.Out());
            if (cell)
                cell->GetElevation(&elevation);
            const std::int16_t index = static_cast<BYTE>(palette.IndexOf(elevation));
            pixel[0] = palette.GetBlue(index);
            pixel[1] = palette.GetGreen(index);
            pixel[2] = palette.GetRed(index);
        }
        if (progress)
            progress->StepProgress(1);
    }
}

HRESULT CoTessara::CreateTextureSurface3D(int resolution)
{
    if (resolution < 0 || !m_pTextureMgr)
        return E_FAIL;
    return Guard(
        [&] {
            const std::vector<BYTE> pixels(
                static_cast<std::size_t>(resolution) * static_cast<std::size_t>(resolution) * 4, 0xFF);
            const HRESULT result = CreateSlotTexture(Source, resolution, resolution, kBlankBits, pixels.data());
            if (FAILED(result))
                return E_FAIL;
            m_pTextureMgr->UnbindTexture();
            return S_OK;
        },
        E_FAIL);
}
