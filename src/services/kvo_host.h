#pragma once

#include "../platform/com/unknown.h"

struct IImageFile;
struct IProgressWindow;
struct ITextureDatabase;
struct ITextureMgr;

/// The host object: where a surface gets the host's services. Every object that goes out carries one reference for the
/// caller. A selector of a database is null for the system database and non-null for the user database; the variant's
/// content is never set.
struct IKvoHost : IUnknown {
    /// Gives the texture service, or null.
    virtual HRESULT STDMETHODCALLTYPE GetTextureMgr(ITextureMgr** textures) = 0;

    virtual HRESULT STDMETHODCALLTYPE CreateImageFile(IImageFile** image) = 0;

    virtual HRESULT STDMETHODCALLTYPE OpenTextureDatabase(ITextureDatabase** database, VARIANT* selector) = 0;

    /// Gives a new string, different from those of all earlier calls, for the caller to free.
    virtual HRESULT STDMETHODCALLTYPE NewElementKey(BSTR* key) = 0;

    /// Makes a texture of an element of a database.
    /// \param id on success a texture of the texture service, held for the caller; left alone on a failure
    virtual HRESULT STDMETHODCALLTYPE LoadTextureFromDB(BSTR name, BSTR table, ULONG* id, VARIANT* selector) = 0;

    /// Makes a plain OpenGL texture of an element in the context that is current, outside the texture service. The
    /// caller deletes it with glDeleteTextures. The caller's quad has s = 0 at its right edge and t = 0 at its lower
    /// one: to be seen upright, the picture goes to OpenGL turned by half, its last pixel first.
    virtual HRESULT STDMETHODCALLTYPE LoadPreviewTexture(BSTR key, BSTR table, ULONG* textureName,
                                                         VARIANT* selector) = 0;

    /// Gives the progress display, or null.
    virtual HRESULT STDMETHODCALLTYPE GetProgressWindow(IProgressWindow** progress) = 0;

protected:
    ~IKvoHost() = default;
};

template <>
inline constexpr GUID InterfaceId<IKvoHost> = {
    0x3B0C5A57, 0x7C0E, 0x4A8F, {0x9D, 0x12, 0x5E, 0x84, 0x61, 0x2F, 0xA0, 0x01}};
