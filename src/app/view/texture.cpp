#include "app/view/texture.h"

#include <cstddef>

namespace tessara {

Texture::Texture(const GlFunctions& gl, GLint internalFormat, int width, int height, GLenum format, GLenum type,
                 const void* pixels, TextureFilter filter)
{
    glGenTextures(1, &name_);
    Bind();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, width, height, 0, format, type, pixels);
    constexpr GLint kMinFilters[] = {GL_LINEAR_MIPMAP_LINEAR, GL_LINEAR_MIPMAP_NEAREST, GL_NEAREST};
    if (filter != TextureFilter::Nearest)
        gl.GenerateMipmap(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, kMinFilters[static_cast<std::size_t>(filter)]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter == TextureFilter::Nearest ? GL_NEAREST : GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

void Texture::Update(int x, int y, int width, int height, int rowLength, GLenum format, GLenum type, const void* pixels)
{
    Bind();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, rowLength);
    glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, width, height, format, type, pixels);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

void Texture::RenewMipmaps(const GlFunctions& gl)
{
    Bind();
    gl.GenerateMipmap(GL_TEXTURE_2D);
}

}  // namespace tessara
