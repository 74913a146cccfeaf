#pragma once

#include "platform/gl/gl_functions.h"

#include <string>

namespace tessara {

/// An OpenGL context in the compatibility profile without a window or a display server, current on the thread that made
/// it. It has no frame of its own to draw into: that is a RenderTarget's.
class OffscreenContext {
public:
    /// Prefers a graphics card to a renderer in software. The context that the thread had is no longer current then.
    /// \throws std::runtime_error that says in one sentence what the system lacks
    OffscreenContext();

    OffscreenContext(OffscreenContext&& other) noexcept;
    OffscreenContext& operator=(OffscreenContext&& other) noexcept;
    ~OffscreenContext();

    /// Makes this the context of the calling thread. \throws std::runtime_error
    void MakeCurrent();

    /// The driver's name of the renderer and its OpenGL version.
    std::string Describe() const;

    /// Looks up entry points of contexts of this kind.
    static GlLookup Lookup() noexcept;

private:
    bool Open(void* display);

    void* display_ = nullptr;  // shared by the whole process and never closed
    void* context_ = nullptr;
};

}  // namespace tessara
