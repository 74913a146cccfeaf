#include "app/view/shader_program.h"

#include <stdexcept>

namespace tessara {

ShaderProgram::ShaderProgram(const GlFunctions& gl, const std::string& vertexSource, const std::string& fragmentSource)
    : gl_(gl), program_(gl.CreateProgram())
{
    try {
        Compile(GL_VERTEX_SHADER, vertexSource);
        Compile(GL_FRAGMENT_SHADER, fragmentSource);
        gl_.LinkProgram(program_);
        GLint linked = GL_FALSE;
        gl_.GetProgramiv(program_, GL_LINK_STATUS, &linked);
        if (!linked) {
            char log[1024] = {};
            gl_.GetProgramInfoLog(program_, sizeof log, nullptr, log);
            throw std::runtime_error(std::string("OpenGL can't link a shader program: ") + log);
        }
    } catch (...) {
        gl_.DeleteProgram(program_);
        throw;
    }
}

ShaderProgram::~ShaderProgram()
{
    gl_.DeleteProgram(program_);
}

void ShaderProgram::Use() const
{
    gl_.UseProgram(program_);
}

void ShaderProgram::Set(const char* name, int value) const
{
    gl_.Uniform1i(gl_.GetUniformLocation(program_, name), value);
}

void ShaderProgram::Set(const char* name, double value) const
{
    gl_.Uniform1f(gl_.GetUniformLocation(program_, name), static_cast<GLfloat>(value));
}

void ShaderProgram::Set(const char* name, double x, double y, double z) const
{
    gl_.Uniform3f(gl_.GetUniformLocation(program_, name), static_cast<GLfloat>(x), static_cast<GLfloat>(y),
                  static_cast<GLfloat>(z));
}

void ShaderProgram::Compile(GLenum kind, const std::string& source)
{
    const GLuint shader = gl_.CreateShader(kind);
    const GLchar* text = source.c_str();
    gl_.ShaderSource(shader, 1, &text, nullptr);
    gl_.CompileShader(shader);
    GLint compiled = GL_FALSE;
    gl_.GetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    char log[1024] = {};
    if (!compiled)
        gl_.GetShaderInfoLog(shader, sizeof log, nullptr, log);
    gl_.AttachShader(program_, shader);
    gl_.DeleteShader(shader);  // it goes with the program
    if (!compiled)
        throw std::runtime_error(std::string("OpenGL can't compile a shader: ") + log);
}

}  // namespace tessara
