#pragma once

#include "app/viewer/picture/frame_governor.h"
#include "platform/gl/render_target.h"

#include <memory>

namespace tessara {

/// Brings pictures into a window through frames in memory: with smooth edges, or coarser than the window while they
/// move, where the processor does the work of the graphics card. Belongs to one OpenGL context.
class SmoothFrame {
public:
    /// \param gl outlives this object
    explicit SmoothFrame(const GlFunctions& gl);

    /// Whether graphics are quick enough to smooth the edges of a picture that moves.
    bool IsQuick() const noexcept { return quick_; }

    /// What is drawn from now on goes into a frame for a window of that size, whose viewport is set.
    /// \return false where the context can't hold one: it goes to the window as it is
    bool Begin(int width, int height);

    /// The same, with as many pixels as there is time for while the picture moves. \return false too where that are all
    /// of the window's
    bool BeginCoarse(int width, int height);

    /// Keeps what was drawn since Begin, where it took long.
    void Keep();

    /// Puts the frame into the window, into which is drawn from now on.
    void End();

    /// Puts the picture that was kept into the window, into which is drawn from now on. \return false where there is
    /// none of that size
    bool ShowKept(int width, int height);

    /// Hears how long frames of a moving picture take.
    FrameGovernor& Governor() noexcept { return governor_; }

private:
    bool Bind(std::unique_ptr<RenderTarget>& target, int width, int height, bool smooth);
    void Show(const RenderTarget& target) const;

    const GlFunctions& gl_;
    FrameGovernor governor_;
    std::unique_ptr<RenderTarget> smooth_;
    std::unique_ptr<RenderTarget> coarse_;
    std::unique_ptr<RenderTarget> kept_;
    RenderTarget* drawn_ = nullptr;  // into which is drawn
    int width_ = 0;                  // of the window
    int height_ = 0;
    bool quick_;
    bool failed_ = false;
};

}  // namespace tessara
