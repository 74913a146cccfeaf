#include "dialog/image_filter.h"
#include "platform/ui/cfile_dialog.h"
#include "platform/ui/resource_table.h"
#include "platform/ui/wait_cursor.h"
#include "services/image_file.h"
#include "services/kvo_host.h"
#include "services/progress_window.h"
#include "services/texture_mgr.h"
#include "surface/co_tessara.h"

#include <utility>

namespace {

constexpr UINT kImportFailed = 103;

const tessara::StringResource kStrings[] = {{kImportFailed, "Error Importing Texture"}};
const tessara::StringTable g_strings(kStrings);

/// Closes a reader whose file was opened.
class OpenImage {
public:
    explicit OpenImage(IImageFile& image) : image_(image) {}
    OpenImage(const OpenImage&) = delete;
    OpenImage& operator=(const OpenImage&) = delete;
    ~OpenImage() { image_.Close(); }

private:
    IImageFile& image_;
};

/// Pixels that the texture service gave away.
class TaskMemory {
public:
    TaskMemory() = default;
    TaskMemory(const TaskMemory&) = delete;
    TaskMemory& operator=(const TaskMemory&) = delete;
    ~TaskMemory() { CoTaskMemFree(memory_); }
    void** Out() noexcept { return &memory_; }
    const void* Get() const noexcept { return memory_; }

private:
    void* memory_ = nullptr;
};

/// Saving a texture as a picture is part of the interface, and not offered.
HRESULT ExportTexture(IUnknown*, const void*, LONG, LONG)
{
    return E_FAIL;
}

}  // namespace

HRESULT CoTessara::ImportTextureSource(IUnknown* parent)
{
    if (!m_pKvo || !m_pTextureMgr)
        return E_FAIL;
    return Guard(
        [&] {
            CWnd* const owner = parent ? reinterpret_cast<CWnd*>(parent) : AfxGetMainWnd();
            CFileDialog dialog(TRUE, "*.*", nullptr, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, tessara::kImageFilter,
                               owner);
            if (dialog.DoModal() != IDOK)
                return E_FAIL;
            ComPtr<IImageFile> image;
            if (FAILED(CoCreateInstance(CLSID_ImageFile, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<IImageFile>,
                                        image.OutVoid())))
                return E_FAIL;
            return ImportImage(std::move(image), dialog.GetPathName());
        },
        E_FAIL);
}

/// Reads a picture under the wait cursor and puts it into the source slot.
HRESULT CoTessara::ImportImage(ComPtr<IImageFile> image, const std::string& path)
{
    const tessara::WaitCursor cursor;
    const tessara::BstrHolder name(path);
    ComPtr<IProgressWindow> progress;
    m_pKvo->GetProgressWindow(progress.Out());
    const ComPtr<IImageFile> reader = std::move(image);  // released before the progress display and the cursor
    reader->SetProgressWindow(progress.Get());
    reader->SetTextureMgr(m_pTextureMgr);
    reader->SetFileName(name.Get());
    const HRESULT opened = reader->Open();
    if (FAILED(opened)) {
        if (progress)
            progress->ShowMessage(tessara::BstrHolder(LoadString(kImportFailed)).Get());
        return E_FAIL;
    }
    const OpenImage open(*reader);
    UINT width = 0;
    UINT height = 0;
    VARIANT pixels{};
    WORD bitsPerPixel = 0;
    reader->GetWidth(&width);
    reader->GetHeight(&height);
    reader->ReadPixels();
    reader->GetPixels(&pixels);
    reader->GetBitsPerPixel(&bitsPerPixel);
    if (!pixels.byref)
        return opened;
    return ReplaceSource(static_cast<LONG>(width), static_cast<LONG>(height), bitsPerPixel, pixels.byref);
}

/// The slot's names stay the same: the old texture goes first, or the texture service would give it back.
HRESULT CoTessara::ReplaceSource(LONG width, LONG height, LONG bitsPerPixel, const void* pixels)
{
    if (m_textureId[Source] != 0)
        m_pTextureMgr->ReleaseTexture(std::exchange(m_textureId[Source], 0));
    const HRESULT result = CreateSlotTexture(Source, width, height, bitsPerPixel, pixels);
    if (SUCCEEDED(result))
        UseTextureSource(1);
    m_pTextureMgr->UnbindTexture();
    return result;
}

HRESULT CoTessara::ExportTextureSource(IUnknown* parent)
{
    if (m_textureId[Source] == 0 || !m_pTextureMgr)
        return E_FAIL;
    m_pTextureMgr->ResetTextureUnit();
    m_pTextureMgr->BindTexture(m_textureId[Source]);
    LONG width = 0;
    LONG height = 0;
    TaskMemory pixels;
    m_pTextureMgr->GetTextureData(m_textureId[Source], &width, &height, nullptr, 0, pixels.Out());
    if (width < 1 || height < 1)
        return E_FAIL;
    return ExportTexture(parent, pixels.Get(), width, height);
}

HRESULT CoTessara::ExportTextureCanvas(IUnknown* parent)
{
    return ExportTexture(parent, nullptr, 0, 0);
}
