#pragma once

#include "platform/gl/current_context.h"
#include "platform/ui/device_context.h"
#include "platform/ui/window_types.h"

namespace tessara {

/// The surface of a viewport for OpenGL, by the system's own WGL.
class GlViewport final : public DeviceContext {
public:
    /// \param window of a class with a device of its own; outlives this object
    explicit GlViewport(HWND window) noexcept : window_(window), device_(GetDC(window)) {}
    GlViewport(const GlViewport&) = delete;
    GlViewport& operator=(const GlViewport&) = delete;
    ~GlViewport();

    int Width() const override;
    int Height() const override;
    bool CreateGl() override;
    void DestroyGl() override;
    bool MakeCurrent() override;
    void ReleaseCurrent() override;
    void SwapBuffers() override;

private:
    HWND window_;
    HDC device_;
    HGLRC context_ = nullptr;
    CurrentContext before_;  // what was current before MakeCurrent
};

}  // namespace tessara
