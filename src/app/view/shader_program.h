#pragma once

#include "platform/gl/gl_functions.h"

#include <string>

namespace tessara {

/// A linked program of a vertex and a fragment shader, of the context that was current when it was made.
class ShaderProgram {
public:
    /// \param gl outlives this object \throws std::runtime_error with the driver's messages
    ShaderProgram(const GlFunctions& gl, const std::string& vertexSource, const std::string& fragmentSource);
    ShaderProgram(const ShaderProgram&) = delete;
    ShaderProgram& operator=(const ShaderProgram&) = delete;
    ~ShaderProgram();

    /// Until the next UseProgram, drawing goes through this program.
    void Use() const;

    /// Sets a uniform variable of the program, which is in use. One that the program doesn't have is left out.
    void Set(const char* name, int value) const;
    void Set(const char* name, double value) const;
    void Set(const char* name, double x, double y, double z) const;

private:
    void Compile(GLenum kind, const std::string& source);

    const GlFunctions& gl_;
    GLuint program_ = 0;
};

}  // namespace tessara
