#include "host/gl_context.h"

#include "platform/com/guard.h"
#include "platform/gl/gl.h"
#include "platform/ui/device_context.h"

#include <utility>

namespace tessara {

namespace {

/// What the element of a database is seen before: a light grey that neither bright nor dark textures vanish in.
constexpr float kBackground = 0.92f;

void SetUpDrawing(const DeviceContext& device, LONG width, LONG height)
{
    glViewport(0, 0, device.Width(), device.Height());
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, width, 0.0, height, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClearColor(kBackground, kBackground, kBackground, 1.0f);
}

}  // namespace

HRESULT GlContext::Create(VARIANT device, VARIANT*, LONG, LONG, LONG width, LONG height, LONG)
{
    if (device_)
        return E_UNEXPECTED;
    auto* const surface = static_cast<DeviceContext*>(device.byref);
    if (!surface)
        return E_POINTER;
    return Guard([&] {
        if (!surface->CreateGl())
            return E_FAIL;
        if (!surface->MakeCurrent()) {
            surface->DestroyGl();
            return E_FAIL;
        }
        device_ = surface;
        SetUpDrawing(*surface, width, height);
        surface->ReleaseCurrent();
        return S_OK;
    });
}

HRESULT GlContext::Destroy()
{
    if (!device_)
        return E_UNEXPECTED;
    std::exchange(device_, nullptr)->DestroyGl();
    return S_OK;
}

HRESULT GlContext::MakeCurrent()
{
    if (!device_)
        return E_UNEXPECTED;
    return device_->MakeCurrent() ? S_OK : E_FAIL;
}

HRESULT GlContext::ReleaseCurrent()
{
    if (!device_)
        return E_UNEXPECTED;
    device_->ReleaseCurrent();
    return S_OK;
}

HRESULT GlContext::SwapBuffers(void*, LONG, LONG)
{
    if (!device_)
        return E_UNEXPECTED;
    device_->SwapBuffers();
    return S_OK;
}

}  // namespace tessara
