#pragma once

#include "../platform/com/unknown.h"

class CTextureMgrImp;

/// The texture service. A texture is known by its 32-bit id, 0 meaning none, and is shared by name: a create with a
/// pair of names that exists already gives the existing texture and one more hold. All methods that touch OpenGL need
/// its context current on the calling thread.
struct ITextureMgr : IUnknown {
    /// Makes a texture under the names of the last SetElementName and SetTextureName.
    /// \param width,height in pixels
    /// \param bitsPerPixel 8 (grey), 24 (blue, green, red) or 32 (blue, green, red, alpha)
    /// \param pixels rows without padding, as OpenGL takes them: the first one at t = 0, which a terrain has in
    ///        the north, so a picture's top row comes first; read during the call only, the caller's to free
    /// \param id receives the texture with one hold for the caller, or 0
    /// \return a failure when the texture couldn't be made
    virtual HRESULT STDMETHODCALLTYPE CreateTexture(LONG width, LONG height, LONG bitsPerPixel, const void* pixels,
                                                    ULONG* id) = 0;

    /// Ends 2D texturing on the current unit. Called after each create and after Draw2D.
    virtual HRESULT STDMETHODCALLTYPE UnbindTexture() = 0;

    /// Gives back one hold; the texture goes with the last one.
    virtual HRESULT STDMETHODCALLTYPE ReleaseTexture(ULONG id) = 0;

    /// Enables 2D texturing and binds the texture on the current unit. An unknown id changes nothing.
    virtual HRESULT STDMETHODCALLTYPE BindTexture(ULONG id) = 0;

    /// Reads back the texture that the caller has just bound.
    /// \param width,height,bitsPerPixel receive what OpenGL holds; bitsPerPixel may be null
    /// \param reserved 0
    /// \param pixels receives a buffer in the form of CreateTexture, allocated with CoTaskMemAlloc, which the caller
    ///        frees with CoTaskMemFree
    virtual HRESULT STDMETHODCALLTYPE GetTextureData(ULONG id, LONG* width, LONG* height, LONG* bitsPerPixel,
                                                     LONG reserved, void** pixels) = 0;

    /// Makes a texture unit current. \param unit GL_TEXTURE0_ARB or GL_TEXTURE1_ARB
    virtual HRESULT STDMETHODCALLTYPE SelectTextureUnit(ULONG unit) = 0;

    /// \return non-zero when texture units can be selected; not a result code
    virtual LONG STDMETHODCALLTYPE HasMultitexture() = 0;

    /// First name of the next texture, copied during the call.
    virtual HRESULT STDMETHODCALLTYPE SetElementName(BSTR name) = 0;

    /// Second name of the next texture, copied during the call.
    virtual HRESULT STDMETHODCALLTYPE SetTextureName(BSTR name) = 0;

    /// Gives the object behind the service, without a reference. It lives as long as the service.
    virtual HRESULT STDMETHODCALLTYPE GetImplementation(CTextureMgrImp** implementation) = 0;

    /// Switches 2D texturing off on both units and leaves unit 0 current. Called before a bind that names no unit.
    virtual HRESULT STDMETHODCALLTYPE ResetTextureUnit() = 0;

protected:
    ~ITextureMgr() = default;
};

template <>
inline constexpr GUID InterfaceId<ITextureMgr> = {
    0x3B0C5A53, 0x7C0E, 0x4A8F, {0x9D, 0x12, 0x5E, 0x84, 0x61, 0x2F, 0xA0, 0x01}};
