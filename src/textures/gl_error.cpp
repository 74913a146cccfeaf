#include "textures/gl_error.h"

#include "platform/gl/gl.h"
#include "platform/system/debug_output.h"

#include <string>

namespace tessara {

bool ReportGlError(const char* place)
{
    const GLenum error = glGetError();
    if (error == GL_NO_ERROR)
        return false;
    const auto* text = reinterpret_cast<const char*>(gluErrorString(error));
    const std::string line = "GLError: " + std::string(text ? text : "unknown error") + " on " + place + " \n";
    OutputDebugStringA(line.c_str());
    return true;
}

}  // namespace tessara
