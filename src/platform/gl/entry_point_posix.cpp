#include "platform/gl/entry_point.h"
#include "platform/gl/gl.h"

#include <dlfcn.h>

#include <charconv>
#include <cstring>
#include <string_view>

// Weak: a program may bring an OpenGL library of its own that has no lookup.
extern "C" __attribute__((weak)) PROC glXGetProcAddressARB(const GLubyte* name);

namespace {

/// An entry point that a driver may lack while the library still answers for its name.
struct GatedName {
    std::string_view name;
    std::string_view extension;
    int coreVersion;  // 10 x major + minor of the version that took the same name over; 0: none did
};

constexpr GatedName kGatedNames[] = {
    {"glActiveTextureARB", "GL_ARB_multitexture", 0},
    {"glClientActiveTextureARB", "GL_ARB_multitexture", 0},
    {"glMultiTexCoord2fARB", "GL_ARB_multitexture", 0},
    {"glActiveTexture", "", 13},
    {"glClientActiveTexture", "", 13},
    {"glMultiTexCoord2f", "", 13},
    {"glGenBuffers", "", 15},
    {"glBindBuffer", "", 15},
    {"glBufferData", "", 15},
    {"glDeleteBuffers", "", 15},
    {"glGenerateMipmap", "GL_ARB_framebuffer_object", 30},
    {"glGenFramebuffers", "GL_ARB_framebuffer_object", 30},
    {"glBindFramebuffer", "GL_ARB_framebuffer_object", 30},
    {"glDeleteFramebuffers", "GL_ARB_framebuffer_object", 30},
    {"glCheckFramebufferStatus", "GL_ARB_framebuffer_object", 30},
    {"glFramebufferRenderbuffer", "GL_ARB_framebuffer_object", 30},
    {"glGenRenderbuffers", "GL_ARB_framebuffer_object", 30},
    {"glBindRenderbuffer", "GL_ARB_framebuffer_object", 30},
    {"glDeleteRenderbuffers", "GL_ARB_framebuffer_object", 30},
    {"glRenderbufferStorage", "GL_ARB_framebuffer_object", 30},
};

/// The context's answer, or an empty text without a context.
std::string_view ContextString(GLenum what)
{
    const auto* text = reinterpret_cast<const char*>(glGetString(what));
    return text ? text : std::string_view();
}

bool HasWord(std::string_view words, std::string_view word)
{
    while (!words.empty()) {
        const std::size_t end = words.find(' ');
        if (words.substr(0, end) == word)
            return true;
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
    }
    return false;
}

/// 10 x major + minor of a text such as "2.1 Mesa".
int VersionNumber(std::string_view text)
{
    int major = 0;
    int minor = 0;
    const char* end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, major);
    if (first.ptr != end && *first.ptr == '.')
        std::from_chars(first.ptr + 1, end, minor);
    return 10 * major + minor;
}

bool ContextHas(const GatedName& gate, std::string_view version)
{
    if (gate.coreVersion != 0 && VersionNumber(version) >= gate.coreVersion)
        return true;
    return !gate.extension.empty() && HasWord(ContextString(GL_EXTENSIONS), gate.extension);
}

bool LooksLikeGl(std::string_view name)
{
    return name.starts_with("gl") && name.size() > 2 && name[2] >= 'A' && name[2] <= 'Z';
}

template <class Function>
Function FindSymbol(void* library, const char* name)
{
    return reinterpret_cast<Function>(dlsym(library, name));
}

/// The EGL that the program has loaded, also where it loaded it for itself alone, or null.
void* LoadedEgl()
{
    return dlopen("libEGL.so.1", RTLD_LAZY | RTLD_NOLOAD);
}

PROC AskEgl(const char* name)
{
    void* egl = LoadedEgl();
    if (!egl)
        return nullptr;
    const auto currentContext = FindSymbol<void* (*)()>(egl, "eglGetCurrentContext");
    const auto lookup = FindSymbol<PROC (*)(const char*)>(egl, "eglGetProcAddress");
    const PROC found = currentContext && lookup && currentContext() ? lookup(name) : nullptr;
    dlclose(egl);  // the program's own hold keeps it
    return found;
}

PROC AskWindowSystem(const char* name)
{
    if (const PROC found = AskEgl(name))
        return found;
    return glXGetProcAddressARB ? glXGetProcAddressARB(reinterpret_cast<const GLubyte*>(name)) : nullptr;
}

const char* ExtensionsOfTheWindowSystem(void*)
{
    return "WGL_ARB_extensions_string";
}

}  // namespace

PROC wglGetProcAddress(const char* name)
{
    if (!name)
        return nullptr;
    if (std::strcmp(name, "wglGetExtensionsStringARB") == 0)
        return reinterpret_cast<PROC>(&ExtensionsOfTheWindowSystem);
    const std::string_view version = ContextString(GL_VERSION);
    if (version.empty())
        return nullptr;
    for (const GatedName& gate : kGatedNames) {
        if (gate.name == name)
            return ContextHas(gate, version) ? AskWindowSystem(name) : nullptr;
    }
    // The window system's lookup makes up an answer for any name, what the libraries export is real.
    return LooksLikeGl(name) ? FindSymbol<PROC>(RTLD_DEFAULT, name) : nullptr;
}
