#pragma once

#include "../platform/com/com_object.h"
#include "../services/gl_context.h"

namespace tessara {

class DeviceContext;

/// An OpenGL context on a control of a dialog of this system's window layer: the device that goes into Create is a
/// DeviceContext, which has to outlive the use of the context. Methods fail with E_UNEXPECTED before Create and after
/// Destroy.
class GlContext final : public ComObject<IGLContext> {
public:
    explicit GlContext(IUnknown* outer = nullptr) : ComObject(outer) {}

    /// Pixel (0, 0) is the lower left corner. \return E_POINTER without a device, E_UNEXPECTED for a second context,
    /// E_FAIL where the window system has no OpenGL for it
    HRESULT STDMETHODCALLTYPE Create(VARIANT device, VARIANT* options, LONG colorBits, LONG doubleBuffer, LONG width,
                                     LONG height, LONG flags) override;
    HRESULT STDMETHODCALLTYPE Destroy() override;
    HRESULT STDMETHODCALLTYPE MakeCurrent() override;
    HRESULT STDMETHODCALLTYPE ReleaseCurrent() override;

    /// Shows the frame on the device of Create, whatever is given here.
    HRESULT STDMETHODCALLTYPE SwapBuffers(void* device, LONG x, LONG y) override;

protected:
    ~GlContext() override = default;

private:
    DeviceContext* device_ = nullptr;  // the window's
};

}  // namespace tessara
