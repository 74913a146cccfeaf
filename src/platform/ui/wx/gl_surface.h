#pragma once

#include "platform/gl/current_context.h"
#include "platform/ui/device_context.h"

#include <functional>
#include <memory>

class wxGLCanvas;
class wxGLContext;
class wxRect;
class wxWindow;

namespace tessara {

/// A part of a window that OpenGL draws on.
class GlSurface final : public DeviceContext {
public:
    /// \param paint called when the surface must be drawn \return null where the display has no OpenGL
    static std::unique_ptr<GlSurface> Make(wxWindow* parent, const wxRect& place, std::function<void()> paint);
    GlSurface(const GlSurface&) = delete;
    GlSurface& operator=(const GlSurface&) = delete;
    ~GlSurface();

    /// The window that shows the surface; its parent owns it.
    wxWindow& Window() const noexcept;

    int Width() const override;
    int Height() const override;
    bool CreateGl() override;
    void DestroyGl() override;
    bool MakeCurrent() override;
    void ReleaseCurrent() override;
    void SwapBuffers() override;

private:
    explicit GlSurface(wxGLCanvas* canvas) noexcept;

    wxGLCanvas* canvas_;
    std::unique_ptr<wxGLContext> context_;
    CurrentContext own_;     // the context, as it was current last
    CurrentContext before_;  // what was current at MakeCurrent
};

}  // namespace tessara
