#include "system.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

void StartComponents() {}

bool OpenContext(int side)
{
    EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    const EGLint want[] = {
        EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_DEPTH_SIZE, 24, EGL_RED_SIZE, 8,
        EGL_NONE};
    const EGLint size[] = {EGL_WIDTH, side, EGL_HEIGHT, side, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglInitialize(display, nullptr, nullptr) || !eglBindAPI(EGL_OPENGL_API) ||
        !eglChooseConfig(display, want, &config, 1, &count) || count == 0)
        return false;
    EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    return eglMakeCurrent(display, surface, surface, context) != EGL_FALSE;
}
