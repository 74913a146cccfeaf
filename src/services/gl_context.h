#pragma once

#include "../platform/com/unknown.h"

/// An OpenGL context of its own on a control of a window, for a preview beside the terrain's context.
struct IGLContext : IUnknown {
    /// Makes a context that draws on the control, with pixel coordinates from (0, 0) to (width, height).
    /// \param device type left empty, the data member holds the control's device context
    /// \param options an empty variant
    /// \param colorBits 24
    /// \param doubleBuffer 1
    /// \param width,height size of the control in pixels
    /// \param flags 1
    virtual HRESULT STDMETHODCALLTYPE Create(VARIANT device, VARIANT* options, LONG colorBits, LONG doubleBuffer,
                                             LONG width, LONG height, LONG flags) = 0;

    /// Ends the context.
    virtual HRESULT STDMETHODCALLTYPE Destroy() = 0;

    /// OpenGL calls of this thread go to this context until ReleaseCurrent.
    virtual HRESULT STDMETHODCALLTYPE MakeCurrent() = 0;

    /// Gives the thread the context that it had before MakeCurrent.
    virtual HRESULT STDMETHODCALLTYPE ReleaseCurrent() = 0;

    /// Shows the finished frame. \param device the control's device context; the other two are 0
    virtual HRESULT STDMETHODCALLTYPE SwapBuffers(void* device, LONG x, LONG y) = 0;

protected:
    ~IGLContext() = default;
};

/// Class that CoCreateInstance makes a context of.
inline constexpr CLSID CLSID_GLContext = {0x0EC968E0, 0x569F, 0x4AD9, {0x94, 0x65, 0x27, 0x30, 0x78, 0x4A, 0x80, 0xAC}};

template <>
inline constexpr GUID InterfaceId<IGLContext> = {
    0xAA8C1FE7, 0xD33D, 0x4129, {0x96, 0x56, 0x88, 0x87, 0xA2, 0x3C, 0x94, 0x61}};
