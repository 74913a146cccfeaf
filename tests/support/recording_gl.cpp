#include "support/recording_gl.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace tessara::test {

namespace {

struct NamedConstant {
    GLenum value;
    const char* name;
};

#define C(name)                                                                                                        \
    {                                                                                                                  \
        name, #name                                                                                                    \
    }

// Constants that have the value to themselves.
constexpr NamedConstant kConstants[] = {
    C(GL_TEXTURE_2D),
    C(GL_TEXTURE_1D),
    C(GL_BLEND),
    C(GL_LIGHTING),
    C(GL_LIGHT0),
    C(GL_DEPTH_TEST),
    C(GL_CULL_FACE),
    C(GL_FOG),
    C(GL_ALPHA_TEST),
    C(GL_NORMALIZE),
    C(GL_COLOR_MATERIAL),
    C(GL_SCISSOR_TEST),
    C(GL_STENCIL_TEST),
    C(GL_VERTEX_ARRAY),
    C(GL_NORMAL_ARRAY),
    C(GL_COLOR_ARRAY),
    C(GL_TEXTURE_COORD_ARRAY),
    C(GL_FLOAT),
    C(GL_UNSIGNED_BYTE),
    C(GL_UNSIGNED_SHORT),
    C(GL_UNSIGNED_INT),
    C(GL_SRC_ALPHA),
    C(GL_ONE_MINUS_SRC_ALPHA),
    C(GL_FRONT),
    C(GL_BACK),
    C(GL_FRONT_AND_BACK),
    C(GL_POINT),
    C(GL_LINE),
    C(GL_FILL),
    C(GL_MODELVIEW),
    C(GL_PROJECTION),
    C(GL_TEXTURE),
    C(GL_TEXTURE_ENV),
    C(GL_TEXTURE_ENV_MODE),
    C(GL_MODULATE),
    C(GL_DECAL),
    C(GL_REPLACE),
    C(GL_COMBINE_ARB),
    C(GL_COMBINE_RGB_ARB),
    C(GL_ADD_SIGNED_ARB),
    C(GL_RGB_SCALE_ARB),
    C(GL_TEXTURE_MIN_FILTER),
    C(GL_TEXTURE_MAG_FILTER),
    C(GL_TEXTURE_WRAP_S),
    C(GL_TEXTURE_WRAP_T),
    C(GL_NEAREST),
    C(GL_LINEAR),
    C(GL_NEAREST_MIPMAP_NEAREST),
    C(GL_LINEAR_MIPMAP_NEAREST),
    C(GL_NEAREST_MIPMAP_LINEAR),
    C(GL_LINEAR_MIPMAP_LINEAR),
    C(GL_REPEAT),
    C(GL_CLAMP),
    C(GL_CLAMP_TO_EDGE),
    C(GL_TEXTURE_MAX_ANISOTROPY_EXT),
    C(GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT),
    C(GL_TEXTURE0_ARB),
    C(GL_TEXTURE1_ARB),
    C(GL_TEXTURE_WIDTH),
    C(GL_TEXTURE_HEIGHT),
    C(GL_TEXTURE_COMPONENTS),
    C(GL_LUMINANCE),
    C(GL_RGB),
    C(GL_RGBA),
    C(GL_BGR_EXT),
    C(GL_BGRA_EXT),
    C(GL_POLYGON_MODE),
    C(GL_VIEWPORT),
    C(GL_UNPACK_ALIGNMENT),
    C(GL_PACK_ALIGNMENT),
    C(GL_MAX_TEXTURE_SIZE),
    C(GL_TEXTURE_BINDING_2D),
    C(GL_ACTIVE_TEXTURE_ARB),
    C(GL_MATRIX_MODE),
    C(GL_VENDOR),
    C(GL_RENDERER),
    C(GL_VERSION),
    C(GL_EXTENSIONS),
    C(GL_SMOOTH),
    C(GL_FLAT),
    C(GL_LEQUAL),
    C(GL_LESS),
    C(GL_INVALID_ENUM),
    C(GL_INVALID_VALUE),
    C(GL_INVALID_OPERATION),
    C(GL_OUT_OF_MEMORY),
};

constexpr NamedConstant kPrimitives[] = {
    C(GL_POINTS),         C(GL_LINES),        C(GL_LINE_LOOP), C(GL_LINE_STRIP), C(GL_TRIANGLES),
    C(GL_TRIANGLE_STRIP), C(GL_TRIANGLE_FAN), C(GL_QUADS),     C(GL_QUAD_STRIP), C(GL_POLYGON),
};

constexpr NamedConstant kBuffers[] = {C(GL_COLOR_BUFFER_BIT), C(GL_DEPTH_BUFFER_BIT), C(GL_STENCIL_BUFFER_BIT)};

#undef C

template <std::size_t N>
const char* Lookup(const NamedConstant (&table)[N], GLenum value)
{
    const auto* found = std::find_if(table, table + N, [value](const NamedConstant& c) { return c.value == value; });
    return found == table + N ? nullptr : found->name;
}

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
    float value;
};

template <class T>
struct List {
    const T* first;
    std::size_t count;
};

std::string Text(Enum e)
{
    const char* name = Lookup(kConstants, e.value);
    return name ? name : "0x" + Number(e.value, 16);
}

std::string Text(Primitive p)
{
    const char* name = Lookup(kPrimitives, p.value);
    return name ? name : Number(p.value);
}

std::string Text(Buffers b)
{
    std::string result;
    for (const NamedConstant& bit : kBuffers) {
        if ((b.value & bit.value) != 0)
            result += (result.empty() ? "" : " | ") + std::string(bit.name);
    }
    return result.empty() ? "0" : result;
}

std::string Text(float value)
{
    return Number(value);
}

std::string Text(double value)
{
    return Number(value);
}

std::string Text(GLint value)
{
    return Number(value);
}

std::string Text(GLuint value)
{
    return Number(value);
}

std::string Text(Setting s)
{
    const auto whole = static_cast<GLint>(s.value);
    const char* name =
        static_cast<float>(whole) == s.value && whole > 0xFF ? Lookup(kConstants, static_cast<GLenum>(whole)) : nullptr;
    return name ? name : Number(s.value);
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

template <class... Args>
RecordingGl& Record(const char* function, Args... args)
{
    std::string line = std::string(function) + "(";
    ((line += (line.back() == '(' ? "" : ", ") + Text(args)), ...);
    RecordingGl& gl = RecordingGl::Get();
    gl.Add(line + ")");
    return gl;
}

void SwitchTexturing(GLenum capability, bool on)
{
    if (capability == GL_TEXTURE_2D)
        RecordingGl::Get().textureEnabled[RecordingGl::Get().activeUnit] = on;
}

void SwitchArray(GLenum array, bool on)
{
    RecordingGl& gl = RecordingGl::Get();
    if (array == GL_VERTEX_ARRAY)
        gl.vertexArray.enabled = on;
    else if (array == GL_NORMAL_ARRAY)
        gl.normalArray.enabled = on;
    else if (array == GL_COLOR_ARRAY)
        gl.colorArray.enabled = on;
    else if (array == GL_TEXTURE_COORD_ARRAY)
        gl.texCoordArray[gl.clientUnit].enabled = on;
}

void PointArray(ClientArray& array, GLint size, GLenum type, GLsizei stride, const void* data)
{
    array = {size, type, stride, data, array.enabled};
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
    switch (format) {
    case GL_BGRA_EXT:
    case GL_RGBA:
        return 4;
    case GL_BGR_EXT:
    case GL_RGB:
        return 3;
    default:
        return 1;
    }
}

void AnswerIntegers(GLenum what, GLint* out)
{
    const RecordingGl& gl = RecordingGl::Get();
    switch (what) {
    case GL_POLYGON_MODE:
        std::copy_n(gl.polygonMode, 2, out);
        break;
    case GL_VIEWPORT:
        std::copy_n(gl.viewport, 4, out);
        break;
    case GL_UNPACK_ALIGNMENT:
        *out = gl.unpackAlignment;
        break;
    case GL_PACK_ALIGNMENT:
        *out = gl.packAlignment;
        break;
    case GL_MAX_TEXTURE_SIZE:
        *out = 4096;
        break;
    case GL_TEXTURE_BINDING_2D:
        *out = static_cast<GLint>(gl.boundTexture[gl.activeUnit]);
        break;
    case GL_ACTIVE_TEXTURE_ARB:
        *out = static_cast<GLint>(GL_TEXTURE0_ARB + gl.activeUnit);
        break;
    default:
        *out = 0;
    }
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

extern "C" {

// Calls that only leave their line.
GL_VOID(glPushMatrix, ())
GL_VOID(glPopMatrix, ())
GL_VOID(glLoadIdentity, ())
GL_VOID(glMatrixMode, (GLenum mode), Enum{mode})
GL_VOID(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
GL_VOID(glScalef, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
GL_VOID(glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z), angle, x, y, z)
GL_VOID(glMultMatrixf, (const GLfloat* m), List<float>{m, 16})
GL_VOID(glLoadMatrixf, (const GLfloat* m), List<float>{m, 16})
GL_VOID(glOrtho, (GLdouble l, GLdouble r, GLdouble b, GLdouble t, GLdouble n, GLdouble f), l, r, b, t, n, f)
GL_VOID(glViewport, (GLint x, GLint y, GLsizei w, GLsizei h), x, y, w, h)
GL_VOID(glClear, (GLbitfield mask), Buffers{mask})
GL_VOID(glClearColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), r, g, b, a)
GL_VOID(glBegin, (GLenum mode), Primitive{mode})
GL_VOID(glEnd, ())
GL_VOID(glVertex2f, (GLfloat x, GLfloat y), x, y)
GL_VOID(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
GL_VOID(glTexCoord2f, (GLfloat s, GLfloat t), s, t)
GL_VOID(glColor3f, (GLfloat r, GLfloat g, GLfloat b), r, g, b)
GL_VOID(glColor4f, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), r, g, b, a)
GL_VOID(glBlendFunc, (GLenum source, GLenum target), Enum{source}, Enum{target})
GL_VOID(glPolygonMode, (GLenum face, GLenum mode), Enum{face}, Enum{mode})
GL_VOID(glTexEnvf, (GLenum target, GLenum name, GLfloat value), Enum{target}, Enum{name}, Setting{value})
GL_VOID(glTexEnvi, (GLenum target, GLenum name, GLint value), Enum{target}, Enum{name},
        Setting{static_cast<float>(value)})
GL_VOID(glTexParameterf, (GLenum target, GLenum name, GLfloat value), Enum{target}, Enum{name}, Setting{value})
GL_VOID(glTexParameteri, (GLenum target, GLenum name, GLint value), Enum{target}, Enum{name},
        Setting{static_cast<float>(value)})
GL_VOID(glFlush, ())
GL_VOID(glFinish, ())
GL_VOID(glMultiTexCoord2fARB, (GLenum unit, GLfloat s, GLfloat t), Enum{unit}, s, t)

// Calls that change what later ones see.
void APIENTRY glEnable(GLenum capability)
{
    Record("glEnable", Enum{capability});
    SwitchTexturing(capability, true);
}

void APIENTRY glDisable(GLenum capability)
{
    Record("glDisable", Enum{capability});
    SwitchTexturing(capability, false);
}

void APIENTRY glEnableClientState(GLenum array)
{
    Record("glEnableClientState", Enum{array});
    SwitchArray(array, true);
}

void APIENTRY glDisableClientState(GLenum array)
{
    Record("glDisableClientState", Enum{array});
    SwitchArray(array, false);
}

void APIENTRY glVertexPointer(GLint size, GLenum type, GLsizei stride, const void* data)
{
    RecordingGl& gl = Record("glVertexPointer", size, Enum{type}, stride, data);
    PointArray(gl.vertexArray, size, type, stride, data);
}

void APIENTRY glNormalPointer(GLenum type, GLsizei stride, const void* data)
{
    RecordingGl& gl = Record("glNormalPointer", Enum{type}, stride, data);
    PointArray(gl.normalArray, 3, type, stride, data);
}

void APIENTRY glColorPointer(GLint size, GLenum type, GLsizei stride, const void* data)
{
    RecordingGl& gl = Record("glColorPointer", size, Enum{type}, stride, data);
    PointArray(gl.colorArray, size, type, stride, data);
}

void APIENTRY glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const void* data)
{
    RecordingGl& gl = Record("glTexCoordPointer", size, Enum{type}, stride, data);
    PointArray(gl.texCoordArray[gl.clientUnit], size, type, stride, data);
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
    Upload& upload = gl.uploads.emplace_back();
    upload = {gl.boundTexture[gl.activeUnit], components, width, height, format, gl.unpackAlignment, {}};
    if (data && width > 0 && height > 0) {
        const auto* first = static_cast<const unsigned char*>(data);
        upload.pixels.assign(first, first + static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                                                BytesPerPixel(format));
    }
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
    const char* text = error == GL_INVALID_ENUM        ? "invalid enumerant"
                       : error == GL_INVALID_VALUE     ? "invalid value"
                       : error == GL_INVALID_OPERATION ? "invalid operation"
                       : error == GL_OUT_OF_MEMORY     ? "out of memory"
                                                       : nullptr;
    Record("gluErrorString", Enum{error});
    return reinterpret_cast<const GLubyte*>(text);
}

void APIENTRY glGetIntegerv(GLenum what, GLint* out)
{
    Record("glGetIntegerv", Enum{what});
    AnswerIntegers(what, out);
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
