#pragma once

// The two interfaces of unknown.h where the system has none.

#include "types_posix.h"

/// The root of every interface. Interfaces have no virtual destructor: an object ends itself at its last Release.
struct IUnknown {
    /// Gives the object as the interface `iid`, with one reference for the caller.
    /// \return S_OK; E_POINTER for a null `out`; E_NOINTERFACE, with `*out` null, for an interface it doesn't have.
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) = 0;

    /// \return the new count, for diagnostics only.
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;

    /// \return the new count, for diagnostics only; the object is gone at 0.
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default;
};

inline constexpr IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

/// Maker of the objects of one class.
struct IClassFactory : IUnknown {
    /// Makes a new object and gives it as `iid`. With an outer object only IUnknown may be asked for.
    virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) = 0;

    /// Takes (non-zero) or gives back (0) one lock that keeps the factory's module loaded.
    virtual HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) = 0;

protected:
    ~IClassFactory() = default;
};

inline constexpr IID IID_IClassFactory = {0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
