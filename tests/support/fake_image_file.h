#pragma once

#include "services/image_file.h"
#include "support/fake_services.h"

namespace tessara::test {

/// An image reader that delivers 3 x 2 pixels, or nothing.
class FakeImageFile final : public Fake<IImageFile> {
public:
    using Fake::Fake;
    HRESULT STDMETHODCALLTYPE SetProgressWindow(IProgressWindow* progress) override
    {
        return Log("SetProgressWindow", progress ? "some" : "none");
    }
    HRESULT STDMETHODCALLTYPE SetFileName(BSTR path) override { return Log("SetFileName", path); }
    HRESULT STDMETHODCALLTYPE GetPixels(VARIANT* out) override
    {
        out->byref = hasPixels ? pixel : nullptr;
        return Log("GetPixels");
    }
    HRESULT STDMETHODCALLTYPE GetBitsPerPixel(WORD* bitsPerPixel) override
    {
        return Give(bitsPerPixel, 32, "GetBitsPerPixel");
    }
    HRESULT STDMETHODCALLTYPE GetHeight(UINT* height) override { return Give(height, 2, "GetHeight"); }
    HRESULT STDMETHODCALLTYPE GetWidth(UINT* width) override { return Give(width, 3, "GetWidth"); }
    HRESULT STDMETHODCALLTYPE Open() override
    {
        Log("Open");
        return openResult;
    }
    HRESULT STDMETHODCALLTYPE Close() override { return Log("Close"); }
    HRESULT STDMETHODCALLTYPE ReadPixels() override { return Log("ReadPixels"); }
    HRESULT STDMETHODCALLTYPE SetTextureMgr(ITextureMgr* textures) override
    {
        return Log("SetTextureMgr", textures ? "some" : "none");
    }

    HRESULT openResult = S_OK;
    bool hasPixels = true;
    BYTE pixel[3 * 2 * 4] = {1, 2, 3, 4};
};

/// Serves one object as every new object of a class, as long as it lives.
class ServedClass {
public:
    ServedClass(REFCLSID clsid, IUnknown* object)
    {
        CoRegisterClassObject(clsid, MakeObject<Factory>(object).Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                              &cookie_);
    }
    ServedClass(const ServedClass&) = delete;
    ServedClass& operator=(const ServedClass&) = delete;
    ~ServedClass() { CoRevokeClassObject(cookie_); }

private:
    class Factory final : public ComObject<IClassFactory> {
    public:
        explicit Factory(IUnknown* object) : object_(object) {}
        HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** out) override
        {
            return object_->QueryInterface(iid, out);
        }
        HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    private:
        IUnknown* object_;  // the test's
    };

    DWORD cookie_ = 0;
};

}  // namespace tessara::test
