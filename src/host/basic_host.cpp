#include "host/basic_host.h"

#include "host/element_keys.h"
#include "platform/com/bstr.h"
#include "platform/com/guard.h"
#include "services/image_file.h"

#include <utility>

namespace tessara {

BasicHost::BasicHost(ComPtr<ITextureMgr> textures, ComPtr<IProgressWindow> progress)
    : textures_(std::move(textures)), progress_(std::move(progress))
{
}

HRESULT BasicHost::GetTextureMgr(ITextureMgr** textures)
{
    if (!textures)
        return E_POINTER;
    *textures = ComPtr<ITextureMgr>(textures_).Detach();
    return S_OK;
}

HRESULT BasicHost::CreateImageFile(IImageFile** image)
{
    if (!image)
        return E_POINTER;
    return CoCreateInstance(CLSID_ImageFile, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<IImageFile>,
                            reinterpret_cast<void**>(image));
}

HRESULT BasicHost::OpenTextureDatabase(ITextureDatabase** database, VARIANT*)
{
    if (!database)
        return E_POINTER;
    *database = nullptr;
    return S_FALSE;
}

HRESULT BasicHost::NewElementKey(BSTR* key)
{
    if (!key)
        return E_POINTER;
    *key = nullptr;
    return Guard([&] {
        *key = MakeBstr(tessara::NewElementKey());
        return S_OK;
    });
}

HRESULT BasicHost::LoadTextureFromDB(BSTR, BSTR, ULONG*, VARIANT*)
{
    return E_FAIL;
}

HRESULT BasicHost::LoadPreviewTexture(BSTR, BSTR, ULONG*, VARIANT*)
{
    return E_FAIL;
}

HRESULT BasicHost::GetProgressWindow(IProgressWindow** progress)
{
    if (!progress)
        return E_POINTER;
    *progress = ComPtr<IProgressWindow>(progress_).Detach();
    return S_OK;
}

}  // namespace tessara
