#pragma once

#include "platform/gl/gl_functions.h"

#include <cstdint>
#include <vector>

namespace tessara {

/// A frame in memory to draw into, with depth, that smooths edges: several samples a pixel or, where the context has no
/// such frames, a larger frame that is scaled down. Belongs to the context that was current when it was made.
class RenderTarget {
public:
    /// \param gl outlives this object \param width,height in pixels, positive
    /// \throws std::runtime_error when the context can't hold a frame of that size
    RenderTarget(const GlFunctions& gl, int width, int height, bool antialias);
    RenderTarget(const RenderTarget&) = delete;
    RenderTarget& operator=(const RenderTarget&) = delete;
    ~RenderTarget();

    /// Makes this the frame that OpenGL draws into, with the viewport over all of it.
    void Bind() const;

    /// Copies the picture over the frame that the window shows. That frame is bound afterwards.
    /// \param width,height of that in pixels: a picture of another size is stretched
    void Show(int width, int height) const;

    /// Copies the picture over another one of the same size, which has one sample a pixel. This one is bound
    /// afterwards.
    void CopyTo(const RenderTarget& other) const;

    /// The picture, three bytes red, green and blue a pixel, without padding, the top row first.
    std::vector<std::uint8_t> ReadPixels() const;

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }

private:
    struct Frame {
        GLuint framebuffer = 0;
        GLuint color = 0;
        GLuint depth = 0;
    };

    void Resolve() const;
    void CopyInto(GLuint framebuffer, int width, int height) const;
    bool Create(Frame& frame, GLsizei samples, bool withDepth) const;
    void Destroy(Frame& frame) const;

    const GlFunctions& gl_;
    int width_;
    int height_;
    int scale_ = 1;  // pixels of the frame for one of the picture, along each axis
    Frame drawn_;
    Frame resolved_;  // only where drawn_ has several samples a pixel
};

}  // namespace tessara
