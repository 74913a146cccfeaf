#pragma once

#include "platform/gl/gl.h"

namespace tessara {

/// Finds an OpenGL entry point for the current context by name, or gives null.
using GlLookup = void (*(*)(const char* name))();

/// The entry points of OpenGL 2.0 for shaders and of 3.0 for off-screen frames, of one context.
struct GlFunctions {
    /// Fills the table for the context that is current. \return false, with the table unusable, where the context has
    /// no OpenGL 3.0 or lacks one of the entry points
    bool Load(GlLookup lookup);

    PFNGLACTIVETEXTUREPROC ActiveTexture = nullptr;

    PFNGLCREATESHADERPROC CreateShader = nullptr;
    PFNGLSHADERSOURCEPROC ShaderSource = nullptr;
    PFNGLCOMPILESHADERPROC CompileShader = nullptr;
    PFNGLGETSHADERIVPROC GetShaderiv = nullptr;
    PFNGLGETSHADERINFOLOGPROC GetShaderInfoLog = nullptr;
    PFNGLDELETESHADERPROC DeleteShader = nullptr;
    PFNGLCREATEPROGRAMPROC CreateProgram = nullptr;
    PFNGLATTACHSHADERPROC AttachShader = nullptr;
    PFNGLLINKPROGRAMPROC LinkProgram = nullptr;
    PFNGLGETPROGRAMIVPROC GetProgramiv = nullptr;
    PFNGLGETPROGRAMINFOLOGPROC GetProgramInfoLog = nullptr;
    PFNGLDELETEPROGRAMPROC DeleteProgram = nullptr;
    PFNGLUSEPROGRAMPROC UseProgram = nullptr;
    PFNGLGETUNIFORMLOCATIONPROC GetUniformLocation = nullptr;
    PFNGLUNIFORM1IPROC Uniform1i = nullptr;
    PFNGLUNIFORM1FPROC Uniform1f = nullptr;
    PFNGLUNIFORM3FPROC Uniform3f = nullptr;

    PFNGLGENERATEMIPMAPPROC GenerateMipmap = nullptr;

    PFNGLGENFRAMEBUFFERSPROC GenFramebuffers = nullptr;
    PFNGLDELETEFRAMEBUFFERSPROC DeleteFramebuffers = nullptr;
    PFNGLBINDFRAMEBUFFERPROC BindFramebuffer = nullptr;
    PFNGLBLITFRAMEBUFFERPROC BlitFramebuffer = nullptr;
    PFNGLCHECKFRAMEBUFFERSTATUSPROC CheckFramebufferStatus = nullptr;
    PFNGLFRAMEBUFFERRENDERBUFFERPROC FramebufferRenderbuffer = nullptr;
    PFNGLGENRENDERBUFFERSPROC GenRenderbuffers = nullptr;
    PFNGLDELETERENDERBUFFERSPROC DeleteRenderbuffers = nullptr;
    PFNGLBINDRENDERBUFFERPROC BindRenderbuffer = nullptr;
    PFNGLRENDERBUFFERSTORAGEMULTISAMPLEPROC RenderbufferStorageMultisample = nullptr;

    PFNGLGENQUERIESPROC GenQueries = nullptr;
    PFNGLDELETEQUERIESPROC DeleteQueries = nullptr;
    PFNGLBEGINQUERYPROC BeginQuery = nullptr;
    PFNGLENDQUERYPROC EndQuery = nullptr;
    PFNGLGETQUERYOBJECTUIVPROC GetQueryObjectuiv = nullptr;
};

}  // namespace tessara
