#include "host/kvo_host.h"

#include "host/element_keys.h"
#include "platform/com/bstr.h"
#include "platform/com/guard.h"

namespace tessara {

KvoHost::KvoHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress)
    : textures_(std::move(textures)), progress_(std::move(progress))
{
}

HRESULT KvoHost::GetTextureMgr(ITextureMgr** textures)
{
    if (!textures)
        return E_POINTER;
    *textures = ComPtr<ITextureMgr>(textures_).Detach();
    return S_OK;
}

HRESULT KvoHost::CreateImageFile(IImageFile** image)
{
    if (!image)
        return E_POINTER;
    *image = nullptr;
    return E_NOTIMPL;
}

HRESULT KvoHost::OpenTextureDatabase(ITextureDatabase** database, VARIANT*)
{
    if (!database)
        return E_POINTER;
    *database = nullptr;
    return E_NOTIMPL;
}

HRESULT KvoHost::NewElementKey(BSTR* key)
{
    if (!key)
        return E_POINTER;
    *key = nullptr;
    return Guard([&] {
        *key = MakeBstr(tessara::NewElementKey());
        return S_OK;
    });
}

HRESULT KvoHost::LoadTextureFromDB(BSTR, BSTR, ULONG* id, VARIANT*)
{
    return id ? E_NOTIMPL : E_POINTER;
}

HRESULT KvoHost::LoadPreviewTexture(BSTR, BSTR, ULONG* textureName, VARIANT*)
{
    if (!textureName)
        return E_POINTER;
    *textureName = 0;
    return E_NOTIMPL;
}

HRESULT KvoHost::GetProgressWindow(IProgressWindow** progress)
{
    if (!progress)
        return E_POINTER;
    *progress = ComPtr<IProgressWindow>(progress_).Detach();
    return S_OK;
}

}  // namespace tessara
