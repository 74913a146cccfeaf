#pragma once

#include "../platform/com/com_object.h"
#include "../services/kvo_host.h"
#include "../services/progress_window.h"
#include "../services/texture_mgr.h"
#include "textures/texture_databases.h"

namespace tessara {

/// The host object of a host that is made of this library: hands out the services it was made with.
class KvoHost final : public ComObject<IKvoHost> {
public:
    /// With the databases of this installation and this user, whose failures are shown as messages.
    /// \param textures,progress may be null; the host then answers with null, which surfaces understand as "none"
    KvoHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress);

    KvoHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress, TextureDatabases databases);

    HRESULT STDMETHODCALLTYPE GetTextureMgr(ITextureMgr** textures) override;
    HRESULT STDMETHODCALLTYPE CreateImageFile(IImageFile** image) override;
    HRESULT STDMETHODCALLTYPE OpenTextureDatabase(ITextureDatabase** database, VARIANT* selector) override;
    HRESULT STDMETHODCALLTYPE NewElementKey(BSTR* key) override;
    HRESULT STDMETHODCALLTYPE LoadTextureFromDB(BSTR name, BSTR table, ULONG* id, VARIANT* selector) override;
    HRESULT STDMETHODCALLTYPE LoadPreviewTexture(BSTR key, BSTR table, ULONG* textureName, VARIANT* selector) override;
    HRESULT STDMETHODCALLTYPE GetProgressWindow(IProgressWindow** progress) override;

protected:
    ~KvoHost() override = default;

private:
    ComPtr<ITextureMgr> textures_;
    ComPtr<IProgressWindow> progress_;
    TextureDatabases databases_;
};

}  // namespace tessara
