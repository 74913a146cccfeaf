#pragma once

namespace tessara {

/// A control's surface that OpenGL draws on. It lives as long as its window.
class DeviceContext {
public:
    virtual int Width() const = 0;  ///< in pixels
    virtual int Height() const = 0;

    /// Makes an OpenGL context of the compatibility profile for this surface, which has one at most.
    /// \return false where the system has none, or there is one already
    virtual bool CreateGl() = 0;

    /// Ends the context. It isn't current any more then.
    virtual void DestroyGl() = 0;

    /// Makes the context current on the calling thread and remembers what was current before, of whatever kind it is.
    /// \return false without a context, with nothing changed
    virtual bool MakeCurrent() = 0;

    /// Makes what was current before MakeCurrent current again.
    virtual void ReleaseCurrent() = 0;

    /// Shows what was drawn. The context needn't be current.
    virtual void SwapBuffers() = 0;

protected:
    ~DeviceContext() = default;
};

}  // namespace tessara
