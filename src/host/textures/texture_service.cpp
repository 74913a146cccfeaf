#include "host/textures/texture_service.h"

#include "platform/com/bstr.h"
#include "platform/com/guard.h"
#include "platform/system/debug_output.h"

namespace tessara {

namespace {

void GiveOut(std::int32_t value, LONG* out)
{
    if (out)
        *out = value;
}

}  // namespace

TextureService::~TextureService()
{
    for (const TextureRecord* record : textures_.records)
        delete record;
}

void TextureService::MeetContext()
{
    if (metContext_ || !glGetString(GL_VERSION))
        return;
    metContext_ = true;  // also after a failure: the user is told once
    textures_.InitMultitexture();
    textures_.useAnisotropy = CTextureMgrImp::IsExtensionSupported("GL_EXT_texture_filter_anisotropic");
}

template <class Body>
HRESULT TextureService::Run(Body&& body)
{
    return Guard([&] {
        MeetContext();
        return body() ? S_OK : E_FAIL;
    });
}

HRESULT TextureService::CreateTexture(LONG width, LONG height, LONG bitsPerPixel, const void* pixels, ULONG* id)
{
    if (!id)
        return E_POINTER;
    *id = 0;
    return Run([&] {
        std::uint32_t made = 0;
        const bool done = textures_.CreateTexture(elementName_.c_str(), textureName_.c_str(), width, height,
                                                  bitsPerPixel, pixels, &made);
        *id = made;
        if (!done)
            return false;
        if (*id != 0)
            return true;
        // Registered without a texture, its names would stand for nothing from now on.
        textures_.ReleaseTexture(0);
        OutputDebugStringA(("The texture \"" + textureName_ + "\" has no pixels and isn't made.\n").c_str());
        return false;
    });
}

HRESULT TextureService::UnbindTexture()
{
    return Run([&] { return textures_.DisableTexture(); });
}

HRESULT TextureService::ReleaseTexture(ULONG id)
{
    return Run([&] { return textures_.ReleaseTexture(id); });
}

HRESULT TextureService::BindTexture(ULONG id)
{
    return Run([&] { return textures_.BindTexture(id); });
}

HRESULT TextureService::GetTextureData(ULONG id, LONG* width, LONG* height, LONG* bitsPerPixel, LONG, void** pixels)
{
    for (LONG* out : {width, height, bitsPerPixel}) {
        if (out)
            *out = 0;
    }
    if (pixels)
        *pixels = nullptr;
    return Run([&] {
        std::int32_t columns = 0, rows = 0, bits = 0;
        const bool done = textures_.GetTextureInfo(id, width ? &columns : nullptr, height ? &rows : nullptr,
                                                   bitsPerPixel ? &bits : nullptr, nullptr, pixels,
                                                   [](std::size_t size) { return CoTaskMemAlloc(size); });
        GiveOut(columns, width);
        GiveOut(rows, height);
        GiveOut(bits, bitsPerPixel);
        return done;
    });
}

HRESULT TextureService::SelectTextureUnit(ULONG unit)
{
    return Run([&] {
        if (!textures_.activeTexture)
            return false;
        textures_.activeTexture(unit);
        return true;
    });
}

LONG TextureService::HasMultitexture()
{
    return SUCCEEDED(Run([&] { return textures_.IsMultitextureSupported(); })) ? 1 : 0;
}

HRESULT TextureService::SetElementName(BSTR name)
{
    return Guard([&] {
        elementName_ = NarrowText(name);
        return S_OK;
    });
}

HRESULT TextureService::SetTextureName(BSTR name)
{
    return Guard([&] {
        textureName_ = NarrowText(name);
        return S_OK;
    });
}

HRESULT TextureService::GetImplementation(CTextureMgrImp** implementation)
{
    if (!implementation)
        return E_POINTER;
    *implementation = &textures_;
    return Run([] { return true; });
}

HRESULT TextureService::ResetTextureUnit()
{
    return Run([&] { return textures_.DisableCombinedTextures(); });
}

}  // namespace tessara
