#include "platform/gl/offscreen_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace tessara {

namespace {

bool Lists(const char* extensions, std::string_view name)
{
    return extensions && std::string_view(extensions).find(name) != std::string_view::npos;
}

template <class Function>
Function Find(const char* name)
{
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

/// The displays of the graphics cards and, at the end, those of software renderers.
std::vector<EGLDisplay> DeviceDisplays(PFNEGLGETPLATFORMDISPLAYEXTPROC platformDisplay)
{
    std::vector<EGLDisplay> displays;
    const auto queryDevices = Find<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    const auto queryString = Find<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    EGLint count = 0;
    if (!queryDevices || !queryString || !queryDevices(0, nullptr, &count) || count <= 0)
        return displays;
    std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(count));
    queryDevices(count, devices.data(), &count);
    devices.resize(static_cast<std::size_t>(count));
    std::stable_partition(devices.begin(), devices.end(), [&](EGLDeviceEXT device) {
        return !Lists(queryString(device, EGL_EXTENSIONS), "EGL_MESA_device_software");
    });
    for (EGLDeviceEXT device : devices)
        displays.push_back(platformDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
    return displays;
}

/// Every display that needs no display server, the one to prefer first.
std::vector<EGLDisplay> ServerlessDisplays()
{
    const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    const auto platformDisplay = Find<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    std::vector<EGLDisplay> displays;
    if (!platformDisplay)
        return displays;
    if (Lists(extensions, "EGL_EXT_platform_device"))
        displays = DeviceDisplays(platformDisplay);
    if (Lists(extensions, "EGL_MESA_platform_surfaceless"))
        displays.push_back(platformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));
    return displays;
}

EGLContext CreateContext(EGLDisplay display)
{
    constexpr EGLint kNoAttributes[] = {EGL_NONE};
    if (Lists(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_no_config_context"))
        return eglCreateContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, kNoAttributes);
    constexpr EGLint kAttributes[] = {EGL_SURFACE_TYPE, 0, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, kAttributes, &config, 1, &count) || count == 0)
        return EGL_NO_CONTEXT;
    return eglCreateContext(display, config, EGL_NO_CONTEXT, kNoAttributes);
}

}  // namespace

OffscreenContext::OffscreenContext()
{
    for (EGLDisplay display : ServerlessDisplays()) {
        if (Open(display))
            return;
    }
    throw std::runtime_error("OpenGL can't draw off-screen here: EGL offers no context without a display server "
                             "(is a driver such as Mesa's installed?).");
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
    if (eglGetCurrentContext() == context_)
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);
}

void OffscreenContext::MakeCurrent()
{
    if (!eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_))
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
    return eglGetProcAddress;
}

bool OffscreenContext::Open(void* display)
{
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr) || !eglBindAPI(EGL_OPENGL_API))
        return false;
    const EGLContext context = CreateContext(display);
    if (context == EGL_NO_CONTEXT)
        return false;
    if (!eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
        eglDestroyContext(display, context);
        return false;
    }
    display_ = display;
    context_ = context;
    return true;
}

}  // namespace tessara
