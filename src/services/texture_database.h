#pragma once

#include "../platform/com/unknown.h"

#include <vector>

/// A database of texture elements. An element has a key, which the host generates, and a display name, which the user
/// typed. One object serves one action of the caller, who sets values first and then acts.
struct ITextureDatabase : IUnknown {
    /// Size in pixels and depth (8, 24 or 32 bits) of the element to store.
    virtual HRESULT STDMETHODCALLTYPE SetWidth(UINT width) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetHeight(UINT height) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBitsPerPixel(WORD bitsPerPixel) = 0;

    /// Pixels of the element to store, the top row first: the variant that IImageFile::GetPixels filled. They are read
    /// by StoreElement.
    virtual HRESULT STDMETHODCALLTYPE SetPixels(VARIANT* pixels) = 0;

    /// Key of the element to store or delete.
    virtual HRESULT STDMETHODCALLTYPE SetElementKey(BSTR key) = 0;

    /// Table that ListElements reads.
    virtual HRESULT STDMETHODCALLTYPE SetTableName(BSTR table) = 0;

    /// Writes a new element from the values set.
    virtual HRESULT STDMETHODCALLTYPE StoreElement() = 0;

    /// Removes the element named by the last SetElementKey, or found by the last DisplayNameExists.
    virtual HRESULT STDMETHODCALLTYPE DeleteElement() = 0;

    /// Appends one entry per element to each list, in the order of the rows to show. Each entry is a new string that
    /// the caller frees; an element without a display name has an empty entry.
    virtual HRESULT STDMETHODCALLTYPE ListElements(std::vector<BSTR>* keys, std::vector<BSTR>* displayNames) = 0;

    /// Display name for DisplayNameExists and StoreElement.
    virtual HRESULT STDMETHODCALLTYPE SetDisplayName(BSTR name) = 0;

    /// \return non-zero when an element has that display name; not a result code
    virtual LONG STDMETHODCALLTYPE DisplayNameExists() = 0;

protected:
    ~ITextureDatabase() = default;
};

template <>
inline constexpr GUID InterfaceId<ITextureDatabase> = {
    0x3B0C5A54, 0x7C0E, 0x4A8F, {0x9D, 0x12, 0x5E, 0x84, 0x61, 0x2F, 0xA0, 0x01}};
