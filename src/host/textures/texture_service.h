#pragma once

#include "../../platform/com/com_object.h"
#include "../../services/texture_mgr.h"
#include "../../textures/ctexture_mgr_imp.h"

#include <string>

namespace tessara {

/// The texture service of a host with one OpenGL context, or several that share their textures. It may be made before
/// there is a context: the first call with one current fetches the driver's multitexture entry points and switches
/// anisotropic filtering on where the driver has it.
///
/// Results are E_FAIL where the texture object gives false: for an id that nobody holds, for a texture that couldn't be
/// made or has no pixels, without multitexturing. All methods run on the thread of the context.
class TextureService final : public ComObject<ITextureMgr> {
public:
    HRESULT STDMETHODCALLTYPE CreateTexture(LONG width, LONG height, LONG bitsPerPixel, const void* pixels,
                                            ULONG* id) override;
    HRESULT STDMETHODCALLTYPE UnbindTexture() override;
    HRESULT STDMETHODCALLTYPE ReleaseTexture(ULONG id) override;
    HRESULT STDMETHODCALLTYPE BindTexture(ULONG id) override;
    HRESULT STDMETHODCALLTYPE GetTextureData(ULONG id, LONG* width, LONG* height, LONG* bitsPerPixel, LONG reserved,
                                             void** pixels) override;
    HRESULT STDMETHODCALLTYPE SelectTextureUnit(ULONG unit) override;
    LONG STDMETHODCALLTYPE HasMultitexture() override;
    HRESULT STDMETHODCALLTYPE SetElementName(BSTR name) override;
    HRESULT STDMETHODCALLTYPE SetTextureName(BSTR name) override;
    HRESULT STDMETHODCALLTYPE GetImplementation(CTextureMgrImp** implementation) override;
    HRESULT STDMETHODCALLTYPE ResetTextureUnit() override;

protected:
    /// Textures that are still held go with their context.
    ~TextureService() override;

private:
    template <class Body>
    HRESULT Run(Body&& body);
    void MeetContext();

    CTextureMgrImp textures_;
    std::string elementName_;
    std::string textureName_;
    bool metContext_ = false;
};

}  // namespace tessara
