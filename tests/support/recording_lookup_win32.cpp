// The system's lookup of entry points, in front of the recording OpenGL.

#include "support/recording_gl.h"

#include <cstring>

extern "C" void (*glXGetProcAddressARB(const GLubyte* name))();

namespace {

const char* WINAPI ExtensionsOfTheWindowSystem(HDC)
{
    return "WGL_ARB_extensions_string";
}

template <class Function>
PROC Entry(Function function)
{
    return reinterpret_cast<PROC>(reinterpret_cast<void*>(function));
}

}  // namespace

extern "C" PROC WINAPI wglGetProcAddress(LPCSTR name)
{
    const auto& gl = tessara::test::RecordingGl::Get();
    if (std::strcmp(name, "wglGetExtensionsStringARB") == 0)
        return Entry(&ExtensionsOfTheWindowSystem);
    const bool has = gl.hasContext && gl.extensions && std::strstr(gl.extensions, "GL_ARB_multitexture");
    return has ? Entry(glXGetProcAddressARB(reinterpret_cast<const GLubyte*>(name))) : nullptr;
}
