#pragma once

#include "platform/gl/gl.h"

#include <cstdint>
#include <vector>

/// One registered texture.
struct TextureRecord {
    std::uint32_t refCount;  ///< number of holders, at least 1 for a record in the list
    std::uint32_t id;        ///< OpenGL texture name, 0 until the upload has generated one
    char elementName[50];    ///< first lookup string, zero-terminated
    char textureName[258];   ///< second lookup string, zero-terminated
    std::int32_t width;      ///< the creator's size, made non-negative
    std::int32_t height;
    std::int32_t bitDepth;  ///< 8, 24 or 32 bits per pixel
    const void* data;       ///< the creator's pixels, valid only while the texture is being created
};

/// The OpenGL textures of the application in one list, known by their OpenGL names and shared by a pair of strings,
/// with the settings that each upload applies and the multitexture entry points of the driver. Its OpenGL calls act on
/// the context that is current on the calling thread. Results are true for success.
class CTextureMgrImp {
public:
    CTextureMgrImp() = default;
    CTextureMgrImp(const CTextureMgrImp&) = delete;
    CTextureMgrImp& operator=(const CTextureMgrImp&) = delete;

    /// Frees the list and nothing in it: holders release their textures first.
    virtual ~CTextureMgrImp();

    /// Enables 2D texturing and binds the texture on the current unit. \return false, without an OpenGL call, for an id
    /// that is not registered
    bool BindTexture(std::uint32_t id);

    bool IsMultitextureSupported() const { return multitextureSupported; }

    /// Looks a registered texture up. \param index receives its place in the list; left alone when there is none
    bool FindTextureIndex(std::uint32_t id, std::int32_t* index) const;

    MultiTexCoord2fProc multiTexCoord2f = nullptr;    ///< glMultiTexCoord2fARB
    ActiveTextureProc activeTexture = nullptr;        ///< glActiveTextureARB
    ActiveTextureProc clientActiveTexture = nullptr;  ///< glClientActiveTextureARB
    bool multitextureSupported = false;               ///< all three entry points were found
    std::vector<TextureRecord*> records;              ///< registered textures, oldest first, owned
    std::int32_t magFilter = GL_LINEAR;
    std::int32_t minFilter = GL_LINEAR_MIPMAP_LINEAR;
    std::int32_t wrapS = GL_REPEAT;
    std::int32_t wrapT = GL_REPEAT;
    bool useAnisotropy = false;  ///< give each upload the driver's maximum anisotropy
};
