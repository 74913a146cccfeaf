#pragma once

#include "../platform/gl/gl.h"

#include <cstdint>
#include <cstdlib>
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
/// the context that is current on the calling thread; it takes no lock. Results are true for success.
///
/// Images are rows without padding, the bottom row first: 8 bits luminance, 24 bits blue, green, red, 32 bits blue,
/// green, red, alpha. Internal failures go to the debug output, failures of an image's upload to a message box.
class CTextureMgrImp {
public:
    CTextureMgrImp() = default;
    CTextureMgrImp(const CTextureMgrImp&) = delete;
    CTextureMgrImp& operator=(const CTextureMgrImp&) = delete;

    /// Frees the list and nothing in it: holders release their textures first.
    virtual ~CTextureMgrImp();

    /// Fetches the entry points that are still null. Needs a current context; the owner of the object decides when. The
    /// user gets a message where the driver has none.
    bool InitMultitexture();

    bool IsMultitextureSupported() const { return multitextureSupported; }

    /// Mirrors an image in place: its rows where the height is negative, else its columns where the width is negative.
    /// \return false without pixels
    static bool FlipImage(std::int32_t width, std::int32_t height, std::uint32_t bitsPerPixel, void* pixels);

    /// Gives the texture of a pair of names with one more reference, or makes it of the image and registers it with one
    /// reference. Only the size's absolute values count. 2D texturing is enabled afterwards.
    /// \param elementName at most 49 bytes \param textureName at most 257 bytes
    /// \param id receives the texture, or 0. A texture without pixels or with an empty size has the id 0 as well
    bool CreateTexture(const char* elementName, const char* textureName, std::int32_t width, std::int32_t height,
                       std::int32_t bitDepth, const void* pixels, std::uint32_t* id);

    /// Adds a reference. \return false for an id that is not registered
    bool AddTextureRef(std::uint32_t id);

    /// Takes a reference back; the last one deletes the texture. \return false for an id that is not registered
    bool ReleaseTexture(std::uint32_t id);

    /// Looks a pair of names up, byte by byte. \param id receives the texture; left alone when there is none
    bool FindTexture(const char* elementName, const char* textureName, std::uint32_t* id) const;

    /// Looks a registered texture up. \param index receives its place in the list; left alone when there is none
    bool FindTextureIndex(std::uint32_t id, std::int32_t* index) const;

    /// Describes the texture that is bound on the current unit, which OpenGL may hold in another size than it was
    /// given. Each pointer may be null. \param id names the record only: 0 for a bound texture that is not registered
    /// \param bits receives 8 times the number of components
    /// \param name receives the second name of an id other than 0; room for 258 bytes
    /// \param pixels receives a new image, the caller's to free
    /// \param allocate makes the image; null from it fails the call
    /// \return false for an unregistered id other than 0, with nothing written, and when memory is short
    bool GetTextureInfo(std::uint32_t id, std::int32_t* width, std::int32_t* height, std::int32_t* bits, char* name,
                        void** pixels, void* (*allocate)(std::size_t) = std::malloc) const;

    /// Enables 2D texturing and binds the texture on the current unit. \return false, without an OpenGL call, for an id
    /// that is not registered
    bool BindTexture(std::uint32_t id);

    /// Ends 2D texturing on the current unit. \return true
    bool DisableTexture();

    /// Ends 2D texturing on the units 1 and 0 and leaves unit 0 current. \return false, with nothing changed, without
    /// multitexturing
    bool DisableCombinedTextures();

    /// Exchanges the caller's values with the settings, which act on later uploads. The same call again undoes it.
    void SwapTextureFilters(std::int32_t* min, std::int32_t* mag);
    void SwapTextureWraps(std::int32_t* s, std::int32_t* t);

    /// Uploads a record's image with all mipmaps and writes its id. A record without an image succeeds with the id 0,
    /// without an OpenGL call. 2D texturing is enabled and the texture bound afterwards.
    bool GenerateTexture(TextureRecord* record);

    /// Uploads an image that nothing registers, under OpenGL's initial filters, wrap modes and the environment mode as
    /// it is: the filter settings go to the texture that is bound on entry.
    /// \param id receives the new texture, or 0 without an image; left alone on a failure
    bool GenerateTexture(std::int32_t width, std::int32_t height, std::int32_t bitDepth, const void* pixels,
                         std::uint32_t* id);

    /// Tells whether the context's extension string has the whole word.
    static bool IsExtensionSupported(const char* extension);

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
