#include "host/images/image_file.h"

#include "host/images/image_decoder.h"
#include "platform/com/bstr.h"
#include "platform/com/guard.h"
#include "platform/system/debug_output.h"

#include <stdexcept>

namespace tessara {

namespace {

constexpr LONG kSteps = 100;

/// The bar of one long read.
class ReadProgress {
public:
    explicit ReadProgress(IProgressWindow* progress) : progress_(progress)
    {
        if (!progress_)
            return;
        progress_->SetProgressTitle(BstrHolder("Reading image ....").Get());
        progress_->SetProgressRange(kSteps);
        progress_->BeginProgress(1);
    }
    ReadProgress(const ReadProgress&) = delete;
    ReadProgress& operator=(const ReadProgress&) = delete;
    ~ReadProgress()
    {
        if (progress_)
            progress_->EndProgress(1);
    }

    void Reach(float part)
    {
        for (; progress_ && static_cast<float>(done_) < part * static_cast<float>(kSteps); ++done_)
            progress_->StepProgress(1);
    }

private:
    IProgressWindow* progress_;
    LONG done_ = 0;
};

template <class T>
HRESULT Give(T* out, T value, bool open)
{
    if (!out)
        return E_POINTER;
    *out = value;
    return open ? S_OK : E_UNEXPECTED;
}

}  // namespace

HRESULT ImageFile::SetProgressWindow(IProgressWindow* progress)
{
    progress_ = ComPtr<IProgressWindow>(progress);
    return S_OK;
}

HRESULT ImageFile::SetFileName(BSTR path)
{
    return Guard([&] {
        path_ = NarrowText(path);
        return S_OK;
    });
}

HRESULT ImageFile::GetPixels(VARIANT* pixels)
{
    if (!pixels)
        return E_POINTER;
    VariantInit(pixels);
    if (image_.pixels.empty())
        return E_UNEXPECTED;
    pixels->vt = VT_BYREF | VT_UI1;
    pixels->byref = image_.pixels.data();
    return S_OK;
}

HRESULT ImageFile::GetBitsPerPixel(WORD* bitsPerPixel)
{
    return Give(bitsPerPixel, image_.bitsPerPixel, !image_.pixels.empty());
}

HRESULT ImageFile::GetHeight(UINT* height)
{
    return Give(height, image_.height, !image_.pixels.empty());
}

HRESULT ImageFile::GetWidth(UINT* width)
{
    return Give(width, image_.width, !image_.pixels.empty());
}

void ImageFile::Report(const char* line)
{
    OutputDebugStringA(line);
    if (progress_)
        progress_->ShowMessage(BstrHolder(line).Get());
}

HRESULT ImageFile::Open()
{
    image_ = {};
    return Guard([&]() -> HRESULT {
        try {
            ReadProgress progress(progress_.Get());
            image_ = DecodeImage(path_, [&progress](float part) { progress.Reach(part); });
            progress.Reach(1.0f);
            return S_OK;
        } catch (const std::bad_alloc&) {
            Report(("Can't read the image \"" + path_ + "\": it needs more memory than there is").c_str());
            return E_OUTOFMEMORY;
        } catch (const std::exception& error) {
            Report(error.what());
            return E_FAIL;
        }
    });
}

HRESULT ImageFile::Close()
{
    image_ = {};
    return S_OK;
}

HRESULT ImageFile::ReadPixels()
{
    return image_.pixels.empty() ? E_UNEXPECTED : S_OK;
}

HRESULT ImageFile::SetTextureMgr(ITextureMgr*)
{
    return S_OK;
}

}  // namespace tessara
