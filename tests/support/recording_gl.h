#pragma once

#include "platform/gl/gl.h"

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tessara::test {

/// What one client array points at.
struct ClientArray {
    GLint size = 0;
    GLenum type = 0;
    GLsizei stride = 0;
    const void* data = nullptr;
    bool enabled = false;
};

/// One glDrawElements with bytes as indices, and what the float arrays of vertices, normals and texture coordinates and
/// the byte array of colours held at that moment, up to the highest index. An array that is off or null is empty here.
struct DrawnElements {
    GLenum mode = 0;
    std::vector<GLubyte> indices;
    std::vector<std::array<float, 3>> vertices;
    std::vector<std::array<float, 3>> normals;
    std::vector<std::array<GLubyte, 4>> colors;
    std::vector<std::array<float, 2>> texCoords[2];  ///< by client unit
};

/// One gluBuild2DMipmaps.
struct Upload {
    GLuint texture = 0;  ///< bound at the time
    GLint components = 0;
    GLsizei width = 0;
    GLsizei height = 0;
    GLenum format = 0;
    GLint unpackAlignment = 0;
    std::vector<unsigned char> pixels;  ///< rows without padding
};

/// The OpenGL that a test program links in place of the real one. It draws nothing and appends each call to a log, one
/// readable line a call, such as "glEnable(GL_TEXTURE_2D)"; the fields below say what its queries answer.
///
/// Lines: constants stand by name (by number where the name isn't known), an array of names or floats in braces, a
/// pointer as "null", as the name given with NamePointer, or as "data". glGetError, glGetString and all other queries
/// are in the log as well; Calls leaves chosen ones out.
class RecordingGl {
public:
    static RecordingGl& Get();

    /// Back to the state of a new program: empty log, default answers.
    static void Reset() { Get() = RecordingGl(); }

    /// The log without calls of the functions named, such as {"glGetError", "glGetString"}.
    std::vector<std::string> Calls(std::initializer_list<std::string_view> leaveOut = {}) const;

    /// Number of calls of one function.
    std::size_t Count(std::string_view function) const;

    /// Name of a pointer in the log.
    void NamePointer(const void* pointer, std::string name) { pointerNames[pointer] = std::move(name); }

    // What happened.
    std::vector<std::string> log;
    std::vector<DrawnElements> drawn;
    std::vector<Upload> uploads;

    // What the queries answer.
    std::deque<GLenum> errors;  ///< glGetError takes these first to last, then GL_NO_ERROR
    const char* version = "2.1 recording";
    const char* extensions = "GL_ARB_multitexture GL_ARB_texture_env_combine GL_EXT_texture_filter_anisotropic";
    bool hasContext = true;  ///< glGetString gives null without one
    GLuint nextTexture = 1;  ///< next name of glGenTextures; 0 makes it give 0
    GLint buildResult = 0;   ///< gluBuild2DMipmaps
    float maxAnisotropy = 16.0f;
    GLint polygonMode[2] = {GL_FILL, GL_FILL};
    GLint viewport[4] = {0, 0, 64, 64};
    GLint unpackAlignment = 4;
    GLint packAlignment = 4;
    std::vector<unsigned char> texImage;  ///< what glGetTexImage copies out; empty: the bound texture's last upload

    /// Called at the end of each glDrawElements, after its line and its entry in `drawn`.
    std::function<void(const DrawnElements&)> onDraw;

    /// Called before each line goes into the log.
    std::function<void(const std::string&)> onCall;

    // State that the calls leave.
    ClientArray vertexArray;
    ClientArray normalArray;
    ClientArray colorArray;
    ClientArray texCoordArray[2];
    GLuint activeUnit = 0;
    GLuint clientUnit = 0;
    GLuint boundTexture[2] = {0, 0};
    bool textureEnabled[2] = {false, false};
    std::map<const void*, std::string> pointerNames;

    void Add(std::string line);
    const Upload* LastUpload() const;  ///< of the texture that is bound, or null
};

}  // namespace tessara::test
