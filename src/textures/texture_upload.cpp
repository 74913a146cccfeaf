#include "platform/gl/mipmap_slack.h"
#include "platform/gl/unpadded_rows.h"
#include "platform/system/message_box.h"
#include "textures/ctexture_mgr_imp.h"
#include "textures/gl_error.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <new>

namespace {

/// Form of an image in memory, by its number of components.
struct PixelFormat {
    GLint components;
    GLenum format;
};

constexpr PixelFormat kFormats[] = {{1, GL_LUMINANCE}, {3, GL_BGR_EXT}, {4, GL_BGRA_EXT}};

/// \return null for a depth that has no form
const PixelFormat* FormatOf(std::int32_t bitDepth)
{
    for (const PixelFormat& format : kFormats) {
        if (format.components * 8 == bitDepth)
            return &format;
    }
    return nullptr;
}

/// An image as gluBuild2DMipmaps may read it: the caller's own, or a copy with some room behind it where the library is
/// going to rescale.
class ReadablePixels {
public:
    /// \throws std::bad_alloc
    ReadablePixels(const PixelFormat& format, std::int32_t width, std::int32_t height, const void* pixels)
        : pixels_(pixels)
    {
        const auto columns = static_cast<std::uint32_t>(width);
        const auto rows = static_cast<std::uint32_t>(height);
        if (std::has_single_bit(columns) && std::has_single_bit(rows))
            return;
        const std::size_t size = std::size_t{columns} * rows * static_cast<std::size_t>(format.components);
        copy_.reset(new unsigned char[size + tessara::kMipmapSlack]);
        std::memcpy(copy_.get(), pixels, size);
        std::memset(copy_.get() + size, 0, tessara::kMipmapSlack);
        pixels_ = copy_.get();
    }

    const void* Get() const { return pixels_; }

private:
    const void* pixels_;
    std::unique_ptr<unsigned char[]> copy_;
};

bool BuildMipmaps(const PixelFormat& format, std::int32_t width, std::int32_t height, const void* pixels)
{
    try {
        const ReadablePixels readable(format, width, height, pixels);
        const tessara::UnpaddedRows rows(GL_UNPACK_ALIGNMENT);
        return gluBuild2DMipmaps(GL_TEXTURE_2D, format.components, width, height, format.format, GL_UNSIGNED_BYTE,
                                 readable.Get()) == 0;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void SetFilters(const CTextureMgrImp& settings)
{
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, settings.minFilter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, settings.magFilter);
}

void SetAnisotropy(const CTextureMgrImp& settings)
{
    if (!settings.useAnisotropy)
        return;
    GLfloat limit = 1.0f;
    glGetFloatv(GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT, &limit);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT, limit);
}

GLint LevelValue(GLenum what)
{
    GLint value = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, what, &value);
    return value;
}

/// Components of the bound texture. The textures are made with a plain count, which some drivers give back as the sized
/// format they chose for it.
GLint BoundComponents()
{
    const GLint components = LevelValue(GL_TEXTURE_COMPONENTS);
    switch (components) {
    case GL_LUMINANCE:
    case GL_LUMINANCE8:
        return 1;
    case GL_RGB:
    case GL_RGB8:
        return 3;
    case GL_RGBA:
    case GL_RGBA8:
        return 4;
    default:
        return components;
    }
}

void ReadBack(GLenum format, void* pixels)
{
    const tessara::UnpaddedRows rows(GL_PACK_ALIGNMENT);
    glGetTexImage(GL_TEXTURE_2D, 0, format, GL_UNSIGNED_BYTE, pixels);
}

template <class T>
void Write(T* target, T value)
{
    if (target)
        *target = value;
}

}  // namespace

bool CTextureMgrImp::GenerateTexture(TextureRecord* record)
{
    if (!record || !record->data || record->width <= 0 || record->height <= 0)
        return true;
    glEnable(GL_TEXTURE_2D);
    glGenTextures(1, &record->id);
    if (tessara::ReportGlError("CTextureMgrImp::GenerateTexture"))
        return false;
    if (record->id == 0)
        return true;
    glBindTexture(GL_TEXTURE_2D, record->id);
    glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, static_cast<GLfloat>(GL_MODULATE));
    SetFilters(*this);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, static_cast<GLfloat>(wrapS));
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, static_cast<GLfloat>(wrapT));
    SetAnisotropy(*this);
    const PixelFormat* format = FormatOf(record->bitDepth);
    if (!format)
        return false;
    if (BuildMipmaps(*format, record->width, record->height, record->data))
        return true;
    tessara::ShowMessageBox("Graphic Card Out of Memory\nImage is too big", "Error:Image Loading");
    glDeleteTextures(1, &record->id);
    return false;
}

bool CTextureMgrImp::GenerateTexture(std::int32_t width, std::int32_t height, std::int32_t bitDepth, const void* pixels,
                                     std::uint32_t* id)
{
    if (!pixels || width <= 0 || height <= 0) {
        *id = 0;
        return true;
    }
    glEnable(GL_TEXTURE_2D);
    GLuint name = 0;
    glGenTextures(1, &name);
    if (tessara::ReportGlError("CTextureMgrImp::GenerateTexture"))
        return false;
    SetFilters(*this);
    SetAnisotropy(*this);
    if (name == 0) {
        *id = 0;
        return true;
    }
    glBindTexture(GL_TEXTURE_2D, name);
    const PixelFormat* format = FormatOf(bitDepth);
    if (!format)
        return false;
    if (BuildMipmaps(*format, width, height, pixels)) {
        *id = name;
        return true;
    }
    tessara::ReportGlError("CTextureMgrImp::GenerateTexture 2");
    glDeleteTextures(1, &name);
    return false;
}

bool CTextureMgrImp::GetTextureInfo(std::uint32_t id, std::int32_t* width, std::int32_t* height, std::int32_t* bits,
                                    char* name, void** pixels, void* (*allocate)(std::size_t)) const
{
    if (id != 0) {
        std::int32_t index = 0;
        if (!FindTextureIndex(id, &index))
            return false;
        if (name)
            std::strcpy(name, records[static_cast<std::size_t>(index)]->textureName);
    }
    const GLint columns = LevelValue(GL_TEXTURE_WIDTH);
    const GLint rows = LevelValue(GL_TEXTURE_HEIGHT);
    const GLint components = BoundComponents();
    Write(width, columns);
    Write(height, rows);
    Write(bits, components * 8);
    if (!pixels)
        return true;
    const std::size_t size =
        static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows) * static_cast<std::size_t>(components);
    *pixels = allocate(std::max<std::size_t>(size, 1));  // null always means short of memory
    if (!*pixels)
        return false;
    if (const PixelFormat* format = FormatOf(components * 8))
        ReadBack(format->format, *pixels);
    return true;
}
