#pragma once

#include "../platform/com/unknown.h"

struct IProgressWindow;
struct ITextureMgr;

/// Reader of one image file. Order of use: SetFileName, SetProgressWindow and SetTextureMgr in any order, Open,
/// GetWidth, GetHeight, ReadPixels, GetPixels, GetBitsPerPixel, Close, Release.
struct IImageFile : IUnknown {
    /// Display for a long read; may be null. The reader takes a reference of its own if it keeps it.
    virtual HRESULT STDMETHODCALLTYPE SetProgressWindow(IProgressWindow* progress) = 0;

    virtual HRESULT STDMETHODCALLTYPE SetFileName(BSTR path) = 0;

    /// Puts the pixel pointer into the variant's data member (offset 8). It stays valid until Close; the rows have no
    /// padding, the first one is the top row of the picture, so that its upper edge lies in the north wherever a
    /// surface stretches or tiles it.
    virtual HRESULT STDMETHODCALLTYPE GetPixels(VARIANT* pixels) = 0;

    /// Gives 8 (grey), 24 (blue, green, red) or 32 (blue, green, red, alpha).
    virtual HRESULT STDMETHODCALLTYPE GetBitsPerPixel(WORD* bitsPerPixel) = 0;

    virtual HRESULT STDMETHODCALLTYPE GetHeight(UINT* height) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetWidth(UINT* width) = 0;

    /// Reads the file. After a failure nothing but Close and Release may follow.
    virtual HRESULT STDMETHODCALLTYPE Open() = 0;

    /// Frees what Open and ReadPixels made.
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;

    /// Makes the pixels ready. Called after Open and before GetPixels.
    virtual HRESULT STDMETHODCALLTYPE ReadPixels() = 0;

    /// Texture service for readers that want it; may be null.
    virtual HRESULT STDMETHODCALLTYPE SetTextureMgr(ITextureMgr* textures) = 0;

protected:
    ~IImageFile() = default;
};

/// Class that CoCreateInstance makes an image reader of.
inline constexpr CLSID CLSID_ImageFile = {0x20D016C7, 0x39B3, 0x4D13, {0xAD, 0x1E, 0x9D, 0x10, 0xA3, 0xD8, 0x84, 0x53}};

template <>
inline constexpr GUID InterfaceId<IImageFile> = {
    0x00CDA0BF, 0xA465, 0x4BEB, {0x95, 0xC5, 0x0E, 0x9F, 0xAD, 0x29, 0xF3, 0x64}};
