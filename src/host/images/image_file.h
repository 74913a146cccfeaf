#pragma once

#include "host/images/pixel_packing.h"
#include "platform/com/com_object.h"
#include "services/image_file.h"
#include "services/progress_window.h"
#include "services/texture_mgr.h"

#include <string>

namespace tessara {

/// The image reader: Open reads the whole file, so that nothing can fail behind it. A failure's cause goes in one line
/// to the debug output and, as a message, to the progress window.
class ImageFile final : public ComObject<IImageFile> {
public:
    explicit ImageFile(IUnknown* outer) : ComObject(outer) {}

    HRESULT STDMETHODCALLTYPE SetProgressWindow(IProgressWindow* progress) override;
    HRESULT STDMETHODCALLTYPE SetFileName(BSTR path) override;
    HRESULT STDMETHODCALLTYPE GetPixels(VARIANT* pixels) override;
    HRESULT STDMETHODCALLTYPE GetBitsPerPixel(WORD* bitsPerPixel) override;
    HRESULT STDMETHODCALLTYPE GetHeight(UINT* height) override;
    HRESULT STDMETHODCALLTYPE GetWidth(UINT* width) override;
    HRESULT STDMETHODCALLTYPE Open() override;
    HRESULT STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE ReadPixels() override;
    HRESULT STDMETHODCALLTYPE SetTextureMgr(ITextureMgr* textures) override;

protected:
    ~ImageFile() override = default;

private:
    void Report(const char* line);

    ComPtr<IProgressWindow> progress_;
    std::string path_;
    PackedImage image_;
};

}  // namespace tessara
