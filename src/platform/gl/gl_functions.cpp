#include "platform/gl/gl_functions.h"

#include <charconv>
#include <cstring>

namespace tessara {

namespace {

template <class Function>
bool Take(Function& function, const char* name, GlLookup lookup)
{
    function = reinterpret_cast<Function>(lookup(name));
    return function != nullptr;
}

/// First number of the context's version text, 0 without a context.
int MajorVersion()
{
    const auto* text = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    int major = 0;
    if (text)
        std::from_chars(text, text + std::strlen(text), major);
    return major;
}

}  // namespace

bool GlFunctions::Load(GlLookup lookup)
{
    // A lookup may answer for names that the context doesn't have: the version says what there is.
    if (MajorVersion() < 3)
        return false;
    return Take(ActiveTexture, "glActiveTexture", lookup) && Take(CreateShader, "glCreateShader", lookup) &&
           Take(ShaderSource, "glShaderSource", lookup) && Take(CompileShader, "glCompileShader", lookup) &&
           Take(GetShaderiv, "glGetShaderiv", lookup) && Take(GetShaderInfoLog, "glGetShaderInfoLog", lookup) &&
           Take(DeleteShader, "glDeleteShader", lookup) && Take(CreateProgram, "glCreateProgram", lookup) &&
           Take(AttachShader, "glAttachShader", lookup) && Take(LinkProgram, "glLinkProgram", lookup) &&
           Take(GetProgramiv, "glGetProgramiv", lookup) && Take(GetProgramInfoLog, "glGetProgramInfoLog", lookup) &&
           Take(DeleteProgram, "glDeleteProgram", lookup) && Take(UseProgram, "glUseProgram", lookup) &&
           Take(GetUniformLocation, "glGetUniformLocation", lookup) && Take(Uniform1i, "glUniform1i", lookup) &&
           Take(Uniform1f, "glUniform1f", lookup) && Take(Uniform3f, "glUniform3f", lookup) &&
           Take(GenerateMipmap, "glGenerateMipmap", lookup) && Take(GenFramebuffers, "glGenFramebuffers", lookup) &&
           Take(DeleteFramebuffers, "glDeleteFramebuffers", lookup) &&
           Take(BindFramebuffer, "glBindFramebuffer", lookup) && Take(BlitFramebuffer, "glBlitFramebuffer", lookup) &&
           Take(CheckFramebufferStatus, "glCheckFramebufferStatus", lookup) &&
           Take(FramebufferRenderbuffer, "glFramebufferRenderbuffer", lookup) &&
           Take(GenRenderbuffers, "glGenRenderbuffers", lookup) &&
           Take(DeleteRenderbuffers, "glDeleteRenderbuffers", lookup) &&
           Take(BindRenderbuffer, "glBindRenderbuffer", lookup) &&
           Take(RenderbufferStorageMultisample, "glRenderbufferStorageMultisample", lookup) &&
           Take(GenQueries, "glGenQueries", lookup) && Take(DeleteQueries, "glDeleteQueries", lookup) &&
           Take(BeginQuery, "glBeginQuery", lookup) && Take(EndQuery, "glEndQuery", lookup) &&
           Take(GetQueryObjectuiv, "glGetQueryObjectuiv", lookup);
}

}  // namespace tessara
