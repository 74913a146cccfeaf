#pragma once

#include "../platform/com/com_object.h"
#include "../services/kvo_host.h"
#include "../services/progress_window.h"
#include "../services/texture_mgr.h"

namespace tessara {

/// The host object of a host without texture databases: hands out the services it was made with, and new keys.
class BasicHost : public ComObject<IKvoHost> {
public:
    /// \param textures,progress may be null; the host then answers with null, which surfaces understand as "none"
    BasicHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress);

    HRESULT STDMETHODCALLTYPE GetTextureMgr(ITextureMgr** textures) override;
    HRESULT STDMETHODCALLTYPE CreateImageFile(IImageFile** image) override;

    /// \return S_FALSE, with null
    HRESULT STDMETHODCALLTYPE OpenTextureDatabase(ITextureDatabase** database, VARIANT* selector) override;

    HRESULT STDMETHODCALLTYPE NewElementKey(BSTR* key) override;

    /// Both: \return E_FAIL
    HRESULT STDMETHODCALLTYPE LoadTextureFromDB(BSTR name, BSTR table, ULONG* id, VARIANT* selector) override;
    HRESULT STDMETHODCALLTYPE LoadPreviewTexture(BSTR key, BSTR table, ULONG* textureName, VARIANT* selector) override;

    HRESULT STDMETHODCALLTYPE GetProgressWindow(IProgressWindow** progress) override;

protected:
    ~BasicHost() override = default;

    /// Null where the host has none.
    ITextureMgr* Textures() const noexcept { return textures_.Get(); }

private:
    ComPtr<ITextureMgr> textures_;
    ComPtr<IProgressWindow> progress_;
};

}  // namespace tessara
