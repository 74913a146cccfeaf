#pragma once

#include "platform/gl/gl_functions.h"

namespace tessara {

/// How a texture is seen between its pixels and from afar.
enum class TextureFilter {
    Smooth,  ///< between pixels and between mipmaps
    Plain,   ///< between pixels, by the nearest mipmap
    Nearest  ///< each pixel as it is, without mipmaps
};

/// A 2D texture, clamped at its edges, of the context that was current when it was made.
class Texture {
public:
    /// \param format,type of the pixels, whose rows have no padding \param gl is used by the constructor alone
    Texture(const GlFunctions& gl, GLint internalFormat, int width, int height, GLenum format, GLenum type,
            const void* pixels, TextureFilter filter = TextureFilter::Smooth);
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;
    ~Texture() { glDeleteTextures(1, &name_); }

    /// Replaces a part of the picture, of the same format and type; the smaller mipmaps stay. The texture is bound.
    /// \param pixels the first one of the part, in rows of `rowLength` pixels
    void Update(int x, int y, int width, int height, int rowLength, GLenum format, GLenum type, const void* pixels);

    /// Works the smaller mipmaps out of the picture as it is now. The texture is bound.
    void RenewMipmaps(const GlFunctions& gl);

    void Bind() const { glBindTexture(GL_TEXTURE_2D, name_); }

private:
    GLuint name_ = 0;
};

}  // namespace tessara
