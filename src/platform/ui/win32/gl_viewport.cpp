#include "platform/ui/win32/gl_viewport.h"

#include <utility>

namespace tessara {

namespace {

/// Gives a device the pixel format that a context needs; a window takes one once.
bool HasFormat(HDC device)
{
    if (GetPixelFormat(device) != 0)
        return true;
    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = 24;
    format.cDepthBits = 24;
    const int chosen = ChoosePixelFormat(device, &format);
    return chosen != 0 && SetPixelFormat(device, chosen, &format);
}

RECT Inside(HWND window)
{
    RECT rect{};
    GetClientRect(window, &rect);
    return rect;
}

}  // namespace

GlViewport::~GlViewport()
{
    DestroyGl();
    ReleaseDC(window_, device_);
}

int GlViewport::Width() const
{
    return Inside(window_).right;
}

int GlViewport::Height() const
{
    return Inside(window_).bottom;
}

bool GlViewport::CreateGl()
{
    if (context_ || !HasFormat(device_))
        return false;
    context_ = wglCreateContext(device_);
    return context_ != nullptr;
}

void GlViewport::DestroyGl()
{
    if (!context_)
        return;
    if (wglGetCurrentContext() == context_)
        before_.Restore();
    wglDeleteContext(std::exchange(context_, nullptr));
}

bool GlViewport::MakeCurrent()
{
    const CurrentContext before = CurrentContext::Take();
    if (!context_)
        return false;
    if (!wglMakeCurrent(device_, context_)) {
        before.Restore();
        return false;
    }
    before_ = before;
    return true;
}

void GlViewport::ReleaseCurrent()
{
    before_.Restore();
}

void GlViewport::SwapBuffers()
{
    ::SwapBuffers(device_);
}

}  // namespace tessara
