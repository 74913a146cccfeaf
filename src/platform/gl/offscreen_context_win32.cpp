#include "platform/gl/offscreen_context.h"

#include <stdexcept>
#include <utility>

namespace tessara {

namespace {

/// A window that is never shown, for the pixel format that a context needs. \return its device, or null
HDC MakeDevice()
{
    HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 16, 16, nullptr, nullptr, nullptr, nullptr);
    HDC device = window ? GetDC(window) : nullptr;
    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = 24;
    format.cDepthBits = 24;
    const int chosen = device ? ChoosePixelFormat(device, &format) : 0;
    if (chosen != 0 && SetPixelFormat(device, chosen, &format))
        return device;
    if (window)
        DestroyWindow(window);
    return nullptr;
}

void DestroyDevice(HDC device)
{
    HWND window = WindowFromDC(device);
    ReleaseDC(window, device);
    DestroyWindow(window);
}

}  // namespace

OffscreenContext::OffscreenContext()
{
    if (HDC device = MakeDevice()) {
        if (Open(device))
            return;
        DestroyDevice(device);
    }
    throw std::runtime_error("OpenGL can't draw off-screen here: the system offers no context.");
}

OffscreenContext::OffscreenContext(OffscreenContext&& other) noexcept
    : display_(std::exchange(other.display_, nullptr)), context_(std::exchange(other.context_, nullptr))
{
}

OffscreenContext& OffscreenContext::operator=(OffscreenContext&& other) noexcept
{
    std::swap(display_, other.display_);
    std::swap(context_, other.context_);
    return *this;
}

OffscreenContext::~OffscreenContext()
{
    if (!context_)
        return;
    if (wglGetCurrentContext() == context_)
        wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(static_cast<HGLRC>(context_));
    DestroyDevice(static_cast<HDC>(display_));
}

void OffscreenContext::MakeCurrent()
{
    if (!wglMakeCurrent(static_cast<HDC>(display_), static_cast<HGLRC>(context_)))
        throw std::runtime_error("OpenGL's off-screen context can't be made current on this thread.");
}

std::string OffscreenContext::Describe() const
{
    const auto text = [](GLenum name) {
        const auto* value = reinterpret_cast<const char*>(glGetString(name));
        return std::string(value ? value : "");
    };
    return text(GL_RENDERER) + ", OpenGL " + text(GL_VERSION);
}

GlLookup OffscreenContext::Lookup() noexcept
{
    return
        [](const char* name) { return reinterpret_cast<void (*)()>(reinterpret_cast<void*>(wglGetProcAddress(name))); };
}

bool OffscreenContext::Open(void* display)
{
    HDC device = static_cast<HDC>(display);
    HGLRC context = wglCreateContext(device);
    if (!context || !wglMakeCurrent(device, context)) {
        if (context)
            wglDeleteContext(context);
        return false;
    }
    display_ = device;
    context_ = context;
    return true;
}

}  // namespace tessara
