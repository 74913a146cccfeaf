#pragma once

#include "basic_host.h"
#include "textures/texture_databases.h"

namespace tessara {

/// The host object of a host that is made of this library: hands out the services it was made with.
class KvoHost final : public BasicHost {
public:
    /// With the databases of this installation and this user, whose failures are shown as messages.
    /// \param textures,progress may be null; the host then answers with null, which surfaces understand as "none"
    KvoHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress);

    KvoHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress, TextureDatabases databases);

    HRESULT STDMETHODCALLTYPE OpenTextureDatabase(ITextureDatabase** database, VARIANT* selector) override;
    HRESULT STDMETHODCALLTYPE LoadTextureFromDB(BSTR name, BSTR table, ULONG* id, VARIANT* selector) override;
    HRESULT STDMETHODCALLTYPE LoadPreviewTexture(BSTR key, BSTR table, ULONG* textureName, VARIANT* selector) override;

protected:
    ~KvoHost() override = default;

private:
    TextureDatabases databases_;
};

}  // namespace tessara
