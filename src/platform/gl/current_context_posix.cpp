#include "platform/gl/current_context.h"

#include <dlfcn.h>

#include <cstdint>

// Looked up in the libraries that the process has loaded: who has no windows loads none, and who has no EGL neither.

namespace tessara {

namespace {

constexpr int kEglDraw = 0x3059;
constexpr int kEglRead = 0x305A;
constexpr unsigned kEglOpenGl = 0x30A2;

/// A library that is in the process already, or nothing.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const char* name) noexcept : handle_(dlopen(name, RTLD_LAZY | RTLD_NOLOAD)) {}
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary()
    {
        if (handle_)
            dlclose(handle_);
    }

    template <class Function>
    bool Find(Function& function, const char* name) const noexcept
    {
        function = handle_ ? reinterpret_cast<Function>(dlsym(handle_, name)) : nullptr;
        return function != nullptr;
    }

private:
    void* handle_;
};

struct Egl {
    void* (*currentContext)() = nullptr;
    void* (*currentDisplay)() = nullptr;
    void* (*currentSurface)(int) = nullptr;
    unsigned (*makeCurrent)(void*, void*, void*, void*) = nullptr;
    unsigned (*bindApi)(unsigned) = nullptr;

    bool Load(const LoadedLibrary& library) noexcept
    {
        return library.Find(currentContext, "eglGetCurrentContext") &&
               library.Find(currentDisplay, "eglGetCurrentDisplay") &&
               library.Find(currentSurface, "eglGetCurrentSurface") && library.Find(makeCurrent, "eglMakeCurrent") &&
               library.Find(bindApi, "eglBindAPI");
    }
};

struct Glx {
    void* (*currentContext)() = nullptr;
    void* (*currentDisplay)() = nullptr;
    std::uintptr_t (*currentDrawable)() = nullptr;
    std::uintptr_t (*currentReadDrawable)() = nullptr;
    int (*makeCurrent)(void*, std::uintptr_t, std::uintptr_t, void*) = nullptr;

    bool Load(const LoadedLibrary& library) noexcept
    {
        return library.Find(currentContext, "glXGetCurrentContext") &&
               library.Find(currentDisplay, "glXGetCurrentDisplay") &&
               library.Find(currentDrawable, "glXGetCurrentDrawable") &&
               library.Find(currentReadDrawable, "glXGetCurrentReadDrawable") &&
               library.Find(makeCurrent, "glXMakeContextCurrent");
    }
};

constexpr char kEglLibrary[] = "libEGL.so.1";
constexpr char kGlxLibrary[] = "libGL.so.1";

}  // namespace

CurrentContext CurrentContext::Take() noexcept
{
    CurrentContext found;
    const LoadedLibrary eglLibrary(kEglLibrary);
    if (Egl egl; egl.Load(eglLibrary) && egl.currentContext()) {
        found.kind_ = Kind::Egl;
        found.display_ = egl.currentDisplay();
        found.context_ = egl.currentContext();
        found.draw_ = egl.currentSurface(kEglDraw);
        found.read_ = egl.currentSurface(kEglRead);
        return found;
    }
    const LoadedLibrary glxLibrary(kGlxLibrary);
    if (Glx glx; glx.Load(glxLibrary) && glx.currentContext()) {
        found.kind_ = Kind::Glx;
        found.display_ = glx.currentDisplay();
        found.context_ = glx.currentContext();
        found.draw_ = reinterpret_cast<void*>(glx.currentDrawable());
        found.read_ = reinterpret_cast<void*>(glx.currentReadDrawable());
    }
    return found;
}

void CurrentContext::Clear() noexcept
{
    const CurrentContext current = Take();
    if (current.kind_ == Kind::Egl) {
        const LoadedLibrary library(kEglLibrary);
        if (Egl egl; egl.Load(library))
            egl.makeCurrent(current.display_, nullptr, nullptr, nullptr);
    } else if (current.kind_ == Kind::Glx) {
        const LoadedLibrary library(kGlxLibrary);
        if (Glx glx; glx.Load(library))
            glx.makeCurrent(current.display_, 0, 0, nullptr);
    }
}

void CurrentContext::Restore() const noexcept
{
    const CurrentContext current = Take();
    if (current == *this)
        return;
    if (current.kind_ != kind_)
        Clear();
    if (kind_ == Kind::Egl) {
        const LoadedLibrary library(kEglLibrary);
        if (Egl egl; egl.Load(library)) {
            egl.bindApi(kEglOpenGl);
            egl.makeCurrent(display_, draw_, read_, context_);
        }
    } else if (kind_ == Kind::Glx) {
        const LoadedLibrary library(kGlxLibrary);
        if (Glx glx; glx.Load(library))
            glx.makeCurrent(display_, reinterpret_cast<std::uintptr_t>(draw_), reinterpret_cast<std::uintptr_t>(read_),
                            context_);
    }
}

}  // namespace tessara
