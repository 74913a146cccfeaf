#include "textures/ctexture_mgr_imp.h"

#include "platform/gl/entry_point.h"
#include "platform/system/debug_output.h"
#include "platform/system/message_box.h"
#include "textures/gl_error.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

namespace {

/// The lowest number has no positive counterpart and stays negative, which every user takes for an empty size.
std::int32_t Magnitude(std::int32_t value)
{
    return value < 0 ? static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(value)) : value;
}

/// Copies a text with its end. \return false for a text that is too long
template <std::size_t N>
bool Store(const char* text, char (&field)[N])
{
    const std::size_t size = std::strlen(text) + 1;
    if (size > N)
        return false;
    std::memcpy(field, text, size);
    return true;
}

TextureRecord* FindRecord(const std::vector<TextureRecord*>& records, const char* elementName, const char* textureName)
{
    const auto found = std::find_if(records.begin(), records.end(), [=](const TextureRecord* record) {
        return std::strcmp(record->textureName, textureName) == 0 && std::strcmp(record->elementName, elementName) == 0;
    });
    return found == records.end() ? nullptr : *found;
}

/// Lets the next push_back succeed. \throws std::bad_alloc
void MakeRoom(std::vector<TextureRecord*>& records)
{
    if (records.size() == records.capacity())
        records.reserve(2 * records.size() + 4);
}

template <class Proc>
void FetchOnce(Proc& proc, const char* name)
{
    if (!proc)
        proc = reinterpret_cast<Proc>(reinterpret_cast<void*>(wglGetProcAddress(name)));
}

/// A row-major image whose pixels change places.
class PixelGrid {
public:
    PixelGrid(void* pixels, std::uint64_t columns, std::uint32_t bits)
        : bytes_(static_cast<unsigned char*>(pixels)),
          columns_(columns),
          bits_(bits),
          pixelSize_(std::min<std::uint64_t>(bits / 8, 4))
    {
    }

    void Exchange(std::uint64_t x0, std::uint64_t y0, std::uint64_t x1, std::uint64_t y1)
    {
        unsigned char* first = Pixel(x0, y0);
        std::swap_ranges(first, first + pixelSize_, Pixel(x1, y1));
    }

private:
    unsigned char* Pixel(std::uint64_t x, std::uint64_t y) { return bytes_ + (x + y * columns_) * bits_ / 8; }

    unsigned char* bytes_;
    std::uint64_t columns_;
    std::uint64_t bits_;
    std::uint64_t pixelSize_;
};

}  // namespace

CTextureMgrImp::~CTextureMgrImp() = default;

bool CTextureMgrImp::InitMultitexture()
{
    FetchOnce(activeTexture, "glActiveTextureARB");
    FetchOnce(multiTexCoord2f, "glMultiTexCoord2fARB");
    FetchOnce(clientActiveTexture, "glClientActiveTextureARB");
    multitextureSupported = activeTexture && multiTexCoord2f && clientActiveTexture;
    if (!multitextureSupported)
        tessara::ShowMessageBox("Your current setups does not support multitexturing");
    return multitextureSupported;
}

bool CTextureMgrImp::FlipImage(std::int32_t width, std::int32_t height, std::uint32_t bitsPerPixel, void* pixels)
{
    if (!pixels)
        return false;
    const auto columns = static_cast<std::uint64_t>(std::abs(std::int64_t{width}));
    const auto rows = static_cast<std::uint64_t>(std::abs(std::int64_t{height}));
    PixelGrid grid(pixels, columns, bitsPerPixel);
    if (height < 0) {
        for (std::uint64_t y = 0; y < rows / 2; ++y) {
            for (std::uint64_t x = 0; x < columns; ++x)
                grid.Exchange(x, y, x, rows - 1 - y);
        }
    } else if (width < 0) {
        for (std::uint64_t y = 0; y < rows; ++y) {
            for (std::uint64_t x = 0; x < columns / 2; ++x)
                grid.Exchange(x, y, columns - 1 - x, y);
        }
    }
    return true;
}

bool CTextureMgrImp::CreateTexture(const char* elementName, const char* textureName, std::int32_t width,
                                   std::int32_t height, std::int32_t bitDepth, const void* pixels, std::uint32_t* id)
{
    glEnable(GL_TEXTURE_2D);
    if (TextureRecord* existing = FindRecord(records, elementName, textureName)) {
        existing->refCount += 1;
        *id = existing->id;
        return true;
    }
    *id = 0;
    std::unique_ptr<TextureRecord> record;
    try {
        record = std::make_unique<TextureRecord>();
        MakeRoom(records);
    } catch (const std::bad_alloc&) {
        OutputDebugStringA("Execption on CTextureMgrImp::CreateTexture.\n");
        return false;
    }
    // A name cut short would meet another texture's name.
    if (!Store(elementName, record->elementName) || !Store(textureName, record->textureName)) {
        OutputDebugStringA("Name too long on CTextureMgrImp::CreateTexture.\n");
        return false;
    }
    record->refCount = 1;
    record->height = Magnitude(height);
    record->width = Magnitude(width);
    record->bitDepth = bitDepth;
    record->data = pixels;
    if (!GenerateTexture(record.get()))
        return false;
    *id = record->id;
    records.push_back(record.release());
    return true;
}

bool CTextureMgrImp::AddTextureRef(std::uint32_t id)
{
    std::int32_t index = 0;
    if (!FindTextureIndex(id, &index))
        return false;
    records[static_cast<std::size_t>(index)]->refCount += 1;
    return true;
}

bool CTextureMgrImp::ReleaseTexture(std::uint32_t id)
{
    std::int32_t index = 0;
    if (!FindTextureIndex(id, &index))
        return false;
    const auto place = records.begin() + index;
    if ((*place)->refCount > 1) {
        (*place)->refCount -= 1;
        return true;
    }
    glDeleteTextures(1, &id);
    tessara::ReportGlError("CTextureMgrImp::ReleaseTexture");
    delete *place;
    records.erase(place);
    return true;
}

bool CTextureMgrImp::FindTexture(const char* elementName, const char* textureName, std::uint32_t* id) const
{
    const TextureRecord* found = FindRecord(records, elementName, textureName);
    if (!found)
        return false;
    *id = found->id;
    return true;
}

bool CTextureMgrImp::FindTextureIndex(std::uint32_t id, std::int32_t* index) const
{
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i]->id == id) {
            *index = static_cast<std::int32_t>(i);
            return true;
        }
    }
    return false;
}

bool CTextureMgrImp::BindTexture(std::uint32_t id)
{
    std::int32_t index = 0;
    if (!FindTextureIndex(id, &index))
        return false;
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, id);
    return true;
}

bool CTextureMgrImp::DisableTexture()
{
    glDisable(GL_TEXTURE_2D);
    return true;
}

bool CTextureMgrImp::DisableCombinedTextures()
{
    if (!activeTexture) {
        OutputDebugStringA("Fail trying to combine textures\n");
        return false;
    }
    activeTexture(GL_TEXTURE1_ARB);
    glDisable(GL_TEXTURE_2D);
    activeTexture(GL_TEXTURE0_ARB);
    glDisable(GL_TEXTURE_2D);
    return true;
}

void CTextureMgrImp::SwapTextureFilters(std::int32_t* min, std::int32_t* mag)
{
    std::swap(*min, minFilter);
    std::swap(*mag, magFilter);
}

void CTextureMgrImp::SwapTextureWraps(std::int32_t* s, std::int32_t* t)
{
    std::swap(*s, wrapS);
    std::swap(*t, wrapT);
}

bool CTextureMgrImp::IsExtensionSupported(const char* extension)
{
    if (!wglGetProcAddress("wglGetExtensionsStringARB"))
        return false;
    const auto* text = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    if (!text)
        return false;
    const std::string_view all = text;
    const std::string_view word = extension;
    for (std::size_t at = all.find(word); at != std::string_view::npos; at = all.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || all[at - 1] == ' ') && (end == all.size() || all[end] == ' '))
            return true;
    }
    return false;
}
