#include "support/recording_gl.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>

namespace tessara::test {

namespace {

/// Constants and their names, both from one list.
struct Constants {
    std::vector<GLenum> values;
    std::string_view names;  ///< with commas between them

    /// \return an empty string for a value that isn't here
    std::string NameOf(GLenum value) const
    {
        std::size_t from = 0;
        for (const GLenum v : values) {
            const std::size_t end = std::min(names.find(',', from), names.size());
            if (v == value)
                return std::string(names.substr(from, end - from));
            from = end + 2;
        }
        return "";
    }
};

#define CONSTANTS(name, ...) const Constants name = {{__VA_ARGS__}, #__VA_ARGS__};

// Those that have the value to themselves.
CONSTANTS(kConstants, GL_TEXTURE_2D, GL_BLEND, GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_VERTEX_ARRAY,
          GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_FLOAT, GL_UNSIGNED_BYTE, GL_SRC_ALPHA,
          GL_ONE_MINUS_SRC_ALPHA, GL_FRONT, GL_BACK, GL_FRONT_AND_BACK, GL_POINT, GL_LINE, GL_FILL, GL_MODELVIEW,
          GL_PROJECTION, GL_TEXTURE, GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE, GL_COMBINE_ARB,
          GL_COMBINE_RGB_ARB, GL_ADD_SIGNED_ARB, GL_RGB_SCALE_ARB, GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER,
          GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_NEAREST, GL_LINEAR, GL_LINEAR_MIPMAP_LINEAR, GL_REPEAT, GL_CLAMP,
          GL_CLAMP_TO_EDGE, GL_TEXTURE_MAX_ANISOTROPY_EXT, GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT, GL_TEXTURE0_ARB,
          GL_TEXTURE1_ARB, GL_TEXTURE_WIDTH, GL_TEXTURE_HEIGHT, GL_TEXTURE_COMPONENTS, GL_LUMINANCE, GL_BGR_EXT,
          GL_BGRA_EXT, GL_POLYGON_MODE, GL_UNPACK_ALIGNMENT, GL_PACK_ALIGNMENT, GL_TEXTURE_BINDING_2D,
          GL_ACTIVE_TEXTURE_ARB, GL_VERSION, GL_EXTENSIONS)
CONSTANTS(kPrimitives, GL_LINES, GL_TRIANGLES, GL_TRIANGLE_STRIP, GL_TRIANGLE_FAN, GL_QUADS)
CONSTANTS(kBuffers, GL_COLOR_BUFFER_BIT, GL_DEPTH_BUFFER_BIT, GL_STENCIL_BUFFER_BIT)

template <class T>
std::string Number(T value, auto... options)
{
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, value, options...).ptr};
}

// How an argument reads in the log.
struct Enum {
    GLenum value;
};
struct Primitive {
    GLenum value;
};
struct Buffers {
    GLbitfield value;
};

/// A value of an int or float parameter that may be a constant.
struct Setting {
    explicit Setting(GLint whole) : value(static_cast<float>(whole)) {}
    explicit Setting(GLfloat number) : value(number) {}
    float value;
};

template <class T>
struct List {
    const T* first;
    std::size_t count;
};

std::string Text(Enum e)
{
    const std::string name = kConstants.NameOf(e.value);
    return name.empty() ? "0x" + Number(e.value, 16) : name;
}

std::string Text(Primitive p)
{
    const std::string name = kPrimitives.NameOf(p.value);
    return name.empty() ? Number(p.value) : name;
}

std::string Text(Buffers b)
{
    std::string result;
    for (const GLenum bit : kBuffers.values) {
        if ((b.value & bit) != 0)
            result += (result.empty() ? "" : " | ") + kBuffers.NameOf(bit);
    }
    return result.empty() ? "0" : result;
}

template <class Value>
requires std::is_arithmetic_v<Value> std::string Text(Value value)
{
    return Number(value);
}

std::string Text(Setting s)
{
    const auto whole = static_cast<GLint>(s.value);
    const bool constant = static_cast<float>(whole) == s.value && whole > 0xFF;
    const std::string name = constant ? kConstants.NameOf(static_cast<GLenum>(whole)) : "";
    return name.empty() ? Number(s.value) : name;
}

std::string Text(const void* pointer)
{
    if (!pointer)
        return "null";
    const auto& names = RecordingGl::Get().pointerNames;
    const auto found = names.find(pointer);
    return found == names.end() ? "data" : found->second;
}

template <class T>
std::string Text(List<T> list)
{
    std::string result = "{";
    for (std::size_t i = 0; i < list.count; ++i)
        result += (i ? ", " : "") + Text(list.first[i]);
    return result + "}";
}

/// What is to be kept of a call is lost without memory for it: no exception may cross these functions.
template <class Body>
void WithMemory(Body&& body)
{
    try {
        body();
    } catch (const std::bad_alloc&) {
    }
}

template <class... Args>
RecordingGl& Record(const char* function, Args... args)
{
    RecordingGl& gl = RecordingGl::Get();
    WithMemory([&] {
        std::string line = std::string(function) + "(";
        ((line += (line.back() == '(' ? "" : ", ") + Text(args)), ...);
        gl.Add(line + ")");
    });
    return gl;
}

/// What glEnable and its kin switch, or null for what nobody asks for.
bool* SwitchOf(GLenum what)
{
    RecordingGl& gl = RecordingGl::Get();
    return what == GL_TEXTURE_2D            ? &gl.textureEnabled[gl.activeUnit]
           : what == GL_VERTEX_ARRAY        ? &gl.vertexArray.enabled
           : what == GL_NORMAL_ARRAY        ? &gl.normalArray.enabled
           : what == GL_COLOR_ARRAY         ? &gl.colorArray.enabled
           : what == GL_TEXTURE_COORD_ARRAY ? &gl.texCoordArray[gl.clientUnit].enabled
                                            : nullptr;
}

void Switch(const char* function, GLenum what, bool on)
{
    Record(function, Enum{what});
    if (bool* state = SwitchOf(what))
        *state = on;
}

template <class T, std::size_t N>
void CopyArray(const ClientArray& array, std::size_t count, std::vector<std::array<T, N>>& out)
{
    if (!array.enabled || !array.data)
        return;
    const std::size_t step = array.stride ? static_cast<std::size_t>(array.stride) : sizeof(T) * N;
    out.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        std::memcpy(out[i].data(), static_cast<const char*>(array.data) + i * step, sizeof(T) * N);
}

std::size_t BytesPerPixel(GLenum format)
{
    return format == GL_BGRA_EXT ? 4 : format == GL_BGR_EXT ? 3 : 1;
}

GLuint UnitOf(GLenum unit)
{
    return unit == GL_TEXTURE1_ARB ? 1 : 0;
}

}  // namespace

RecordingGl& RecordingGl::Get()
{
    static RecordingGl& gl = *new RecordingGl;
    return gl;
}

void RecordingGl::Add(std::string line)
{
    if (onCall)
        onCall(line);
    log.push_back(std::move(line));
}

std::vector<std::string> RecordingGl::Calls(std::initializer_list<std::string_view> leaveOut) const
{
    std::vector<std::string> result;
    std::copy_if(log.begin(), log.end(), std::back_inserter(result), [&](const std::string& line) {
        const std::string_view function = std::string_view(line).substr(0, line.find('('));
        return std::find(leaveOut.begin(), leaveOut.end(), function) == leaveOut.end();
    });
    return result;
}

std::size_t RecordingGl::Count(std::string_view function) const
{
    return log.size() - Calls({function}).size();
}

const Upload* RecordingGl::LastUpload() const
{
    const auto found = std::find_if(uploads.rbegin(), uploads.rend(),
                                    [this](const Upload& u) { return u.texture == boundTexture[activeUnit]; });
    return found == uploads.rend() ? nullptr : &*found;
}

}  // namespace tessara::test

using namespace tessara::test;

#define GL_VOID(name, parameters, ...)                                                                                 \
    void APIENTRY name parameters                                                                                      \
    {                                                                                                                  \
        Record(#name __VA_OPT__(, ) __VA_ARGS__);                                                                      \
    }
#define GL_SWITCH(name, on)                                                                                            \
    void APIENTRY name(GLenum what)                                                                                    \
    {                                                                                                                  \
        Switch(#name, what, on);                                                                                       \
    }
#define GL_POINTER(name, array)                                                                                        \
    void APIENTRY name(GLint size, GLenum type, GLsizei stride, const void* data)                                      \
    {                                                                                                                  \
        RecordingGl& gl = Record(#name, size, Enum{type}, stride, data);                                               \
        gl.array = {size, type, stride, data, gl.array.enabled};                                                       \
    }

extern "C" {

// Calls that only leave their line.
GL_VOID(glPushMatrix, ())
GL_VOID(glPopMatrix, ())
GL_VOID(glLoadIdentity, ())
GL_VOID(glMatrixMode, (GLenum mode), Enum{mode})
GL_VOID(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
GL_VOID(glScalef, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
GL_VOID(glMultMatrixf, (const GLfloat* m), List<float>{m, 16})
GL_VOID(glClear, (GLbitfield mask), Buffers{mask})
GL_VOID(glBegin, (GLenum mode), Primitive{mode})
GL_VOID(glEnd, ())
GL_VOID(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
GL_VOID(glTexCoord2f, (GLfloat s, GLfloat t), s, t)
GL_VOID(glColor4f, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), r, g, b, a)
GL_VOID(glBlendFunc, (GLenum source, GLenum target), Enum{source}, Enum{target})
GL_VOID(glPolygonMode, (GLenum face, GLenum mode), Enum{face}, Enum{mode})
GL_VOID(glTexEnvf, (GLenum target, GLenum name, GLfloat value), Enum{target}, Enum{name}, Setting{value})
GL_VOID(glTexEnvi, (GLenum target, GLenum name, GLint value), Enum{target}, Enum{name}, Setting(value))
GL_VOID(glTexParameterf, (GLenum target, GLenum name, GLfloat value), Enum{target}, Enum{name}, Setting{value})
GL_VOID(glTexParameteri, (GLenum target, GLenum name, GLint value), Enum{target}, Enum{name}, Setting(value))
GL_VOID(glMultiTexCoord2fARB, (GLenum unit, GLfloat s, GLfloat t), Enum{unit}, s, t)

// Calls that change what later ones see.
GL_SWITCH(glEnable, true)
GL_SWITCH(glDisable, false)
GL_SWITCH(glEnableClientState, true)
GL_SWITCH(glDisableClientState, false)
GL_POINTER(glVertexPointer, vertexArray)
GL_POINTER(glColorPointer, colorArray)
GL_POINTER(glTexCoordPointer, texCoordArray[gl.clientUnit])

void APIENTRY glNormalPointer(GLenum type, GLsizei stride, const void* data)
{
    RecordingGl& gl = Record("glNormalPointer", Enum{type}, stride, data);
    gl.normalArray = {3, type, stride, data, gl.normalArray.enabled};
}

void APIENTRY glActiveTextureARB(GLenum unit)
{
    Record("glActiveTextureARB", Enum{unit}).activeUnit = UnitOf(unit);
}

void APIENTRY glClientActiveTextureARB(GLenum unit)
{
    Record("glClientActiveTextureARB", Enum{unit}).clientUnit = UnitOf(unit);
}

void APIENTRY glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices)
{
    RecordingGl& gl = Record("glDrawElements", Primitive{mode}, count, Enum{type}, indices);
    WithMemory([&] {
        DrawnElements& draw = gl.drawn.emplace_back();
        draw.mode = mode;
        if (type != GL_UNSIGNED_BYTE || count <= 0 || !indices)
            return;
        const auto* first = static_cast<const GLubyte*>(indices);
        draw.indices.assign(first, first + count);
        const std::size_t used = std::size_t{1} + *std::max_element(draw.indices.begin(), draw.indices.end());
        CopyArray(gl.vertexArray, used, draw.vertices);
        CopyArray(gl.normalArray, used, draw.normals);
        CopyArray(gl.colorArray, used, draw.colors);
        CopyArray(gl.texCoordArray[0], used, draw.texCoords[0]);
        CopyArray(gl.texCoordArray[1], used, draw.texCoords[1]);
        if (gl.onDraw)
            gl.onDraw(draw);
    });
}

void APIENTRY glPixelStorei(GLenum name, GLint value)
{
    RecordingGl& gl = Record("glPixelStorei", Enum{name}, value);
    if (name == GL_UNPACK_ALIGNMENT)
        gl.unpackAlignment = value;
    else if (name == GL_PACK_ALIGNMENT)
        gl.packAlignment = value;
}

void APIENTRY glGenTextures(GLsizei count, GLuint* names)
{
    RecordingGl& gl = Record("glGenTextures", count);
    for (GLsizei i = 0; i < count; ++i)
        names[i] = gl.nextTexture ? gl.nextTexture++ : 0;
}

void APIENTRY glDeleteTextures(GLsizei count, const GLuint* names)
{
    RecordingGl& gl = Record("glDeleteTextures", count, List<GLuint>{names, static_cast<std::size_t>(count)});
    for (GLuint& bound : gl.boundTexture) {
        if (std::find(names, names + count, bound) != names + count)
            bound = 0;
    }
}

void APIENTRY glBindTexture(GLenum target, GLuint name)
{
    RecordingGl& gl = Record("glBindTexture", Enum{target}, name);
    gl.boundTexture[gl.activeUnit] = name;
}

GLint APIENTRY gluBuild2DMipmaps(GLenum target, GLint components, GLsizei width, GLsizei height, GLenum format,
                                 GLenum type, const void* data)
{
    RecordingGl& gl =
        Record("gluBuild2DMipmaps", Enum{target}, components, width, height, Enum{format}, Enum{type}, data);
    WithMemory([&] {
        Upload& upload = gl.uploads.emplace_back();
        upload = {gl.boundTexture[gl.activeUnit], components, width, height, format, gl.unpackAlignment, {}};
        if (data && width > 0 && height > 0) {
            const auto* first = static_cast<const unsigned char*>(data);
            upload.pixels.assign(first, first + static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                                                    BytesPerPixel(format));
        }
    });
    return gl.buildResult;
}

// Queries.
GLenum APIENTRY glGetError()
{
    RecordingGl& gl = Record("glGetError");
    if (gl.errors.empty())
        return GL_NO_ERROR;
    const GLenum error = gl.errors.front();
    gl.errors.pop_front();
    return error;
}

const GLubyte* APIENTRY glGetString(GLenum name)
{
    const RecordingGl& gl = Record("glGetString", Enum{name});
    const char* text = !gl.hasContext          ? nullptr
                       : name == GL_VERSION    ? gl.version
                       : name == GL_EXTENSIONS ? gl.extensions
                                               : "recording";
    return reinterpret_cast<const GLubyte*>(text);
}

const GLubyte* APIENTRY gluErrorString(GLenum error)
{
    Record("gluErrorString", Enum{error});
    const char* text = error == GL_INVALID_VALUE       ? "invalid value"
                       : error == GL_INVALID_OPERATION ? "invalid operation"
                                                       : "out of memory";
    return reinterpret_cast<const GLubyte*>(text);
}

void APIENTRY glGetIntegerv(GLenum what, GLint* out)
{
    const RecordingGl& gl = Record("glGetIntegerv", Enum{what});
    if (what == GL_POLYGON_MODE)
        std::copy_n(gl.polygonMode, 2, out);
    else if (what == GL_VIEWPORT)
        std::copy_n(gl.viewport, 4, out);
    else
        *out = what == GL_UNPACK_ALIGNMENT     ? gl.unpackAlignment
               : what == GL_PACK_ALIGNMENT     ? gl.packAlignment
               : what == GL_TEXTURE_BINDING_2D ? static_cast<GLint>(gl.boundTexture[gl.activeUnit])
                                               : 0;
}

void APIENTRY glGetFloatv(GLenum what, GLfloat* out)
{
    const RecordingGl& gl = Record("glGetFloatv", Enum{what});
    *out = what == GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT ? gl.maxAnisotropy : 0.0f;
}

void APIENTRY glGetTexLevelParameteriv(GLenum target, GLint level, GLenum what, GLint* out)
{
    const RecordingGl& gl = Record("glGetTexLevelParameteriv", Enum{target}, level, Enum{what});
    const Upload* upload = gl.LastUpload();
    *out = !upload                         ? 0
           : what == GL_TEXTURE_WIDTH      ? upload->width
           : what == GL_TEXTURE_HEIGHT     ? upload->height
           : what == GL_TEXTURE_COMPONENTS ? upload->components
                                           : 0;
}

void APIENTRY glGetTexImage(GLenum target, GLint level, GLenum format, GLenum type, void* out)
{
    const RecordingGl& gl =
        Record("glGetTexImage", Enum{target}, level, Enum{format}, Enum{type}, static_cast<const void*>(out));
    const Upload* upload = gl.LastUpload();
    const auto& pixels = gl.texImage.empty() && upload ? upload->pixels : gl.texImage;
    const std::size_t room =
        upload ? static_cast<std::size_t>(upload->width * upload->height) * BytesPerPixel(format) : pixels.size();
    std::copy_n(pixels.begin(), std::min(room, pixels.size()), static_cast<unsigned char*>(out));
}

/// The window system's lookup. Like the real one it answers for any name that looks like an entry point.
void (*glXGetProcAddressARB(const GLubyte* name))()
{
    using Proc = void (*)();
    const std::string_view text = reinterpret_cast<const char*>(name);
    if (text == "glActiveTextureARB")
        return reinterpret_cast<Proc>(&glActiveTextureARB);
    if (text == "glClientActiveTextureARB")
        return reinterpret_cast<Proc>(&glClientActiveTextureARB);
    if (text == "glMultiTexCoord2fARB")
        return reinterpret_cast<Proc>(&glMultiTexCoord2fARB);
    return reinterpret_cast<Proc>(&glFlush);
}
}
