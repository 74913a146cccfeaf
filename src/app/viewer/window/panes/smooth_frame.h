#pragma once

#include "platform/gl/render_target.h"

#include <memory>

namespace tessara {

/// Draws pictures for a window with smooth edges, through a frame in memory. Belongs to one OpenGL context.
class SmoothFrame {
public:
    /// \param gl outlives this object
    explicit SmoothFrame(const GlFunctions& gl);

    /// Whether graphics are quick enough to smooth the edges of a picture that moves.
    bool IsQuick() const noexcept { return quick_; }

    /// What is drawn from now on goes into a frame of that size, whose viewport is set. \return false where the context
    /// can't hold one: it goes to the window as it is
    bool Begin(int width, int height);

    /// Puts the frame into the window.
    void End();

private:
    const GlFunctions& gl_;
    std::unique_ptr<RenderTarget> target_;
    bool quick_;
    bool failed_ = false;
};

}  // namespace tessara
