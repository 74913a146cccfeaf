#include "host/textures/texture_databases.h"

#include "host/textures/texture_database.h"
#include "platform/com/bstr.h"
#include "platform/com/guard.h"
#include "platform/system/debug_output.h"
#include "textures/ctexture_mgr_imp.h"

#include <algorithm>

namespace tessara {

namespace {

/// \throws StorageError
TextureElement FindElement(const DatabasePlace& place, std::string_view name, std::string_view table)
{
    if (const std::unique_ptr<TextureStore> store = OpenStore(place)) {
        if (auto element = store->Load(table, name))
            return *std::move(element);
        if (const auto key = store->FindName(table, name)) {
            if (auto element = store->Load(table, *key))
                return *std::move(element);
        }
    }
    throw StorageError("The texture database \"" + place.path + "\" has no element \"" + std::string(name) + "\"");
}

LONG Signed(std::uint32_t side)
{
    return static_cast<LONG>(side);
}

/// The pixels in the opposite order, last to first: a picture turned by half. The quad of a preview has its first row
/// below and its first column at the right.
std::vector<std::uint8_t> TurnedForPreview(const TextureElement& element)
{
    const std::size_t depth = element.bitsPerPixel / 8u;
    std::vector<std::uint8_t> turned(element.pixels.size());
    for (std::size_t from = 0, to = turned.size(); from + depth <= element.pixels.size(); from += depth) {
        to -= depth;
        std::copy_n(&element.pixels[from], depth, &turned[to]);
    }
    return turned;
}

}  // namespace

TextureDatabases::TextureDatabases(DatabasePlace system, DatabasePlace user, FailureReport report)
    : system_(std::move(system)), user_(std::move(user)), report_(std::move(report))
{
    if (!report_)
        report_ = [](const std::string& sentence) { OutputDebugStringA(sentence.c_str()); };
}

ComPtr<ITextureDatabase> TextureDatabases::Open(bool user) const
{
    return ComPtr<ITextureDatabase>(MakeObject<TextureDatabase>(Place(user), report_).Get());
}

template <class Body>
HRESULT TextureDatabases::WithElement(std::string_view name, std::string_view table, bool user, Body&& body) const
{
    return Guard([&]() -> HRESULT {
        try {
            return body(FindElement(Place(user), name, table));
        } catch (const StorageError& error) {
            report_(error.what());
            return E_FAIL;
        }
    });
}

HRESULT TextureDatabases::LoadTexture(ITextureMgr& textures, std::string_view name, std::string_view table, bool user,
                                      ULONG* id) const
{
    // No name stands for no texture, as a surface asks that had none before: nothing to tell a user about.
    if (name.empty())
        return E_FAIL;
    const std::string place(table.empty() ? kDetailTable : table);
    return WithElement(name, place, user, [&](const TextureElement& element) -> HRESULT {
        textures.SetElementName(BstrHolder(user ? "USERDB" : "APPDB").Get());
        textures.SetTextureName(BstrHolder(place + "/" + element.key).Get());
        ULONG made = 0;
        const HRESULT result = textures.CreateTexture(Signed(element.width), Signed(element.height),
                                                      element.bitsPerPixel, element.pixels.data(), &made);
        if (FAILED(result) || made == 0)
            return FAILED(result) ? result : E_FAIL;
        *id = made;
        return S_OK;
    });
}

HRESULT TextureDatabases::LoadPreview(std::string_view name, std::string_view table, bool user,
                                      ULONG* textureName) const
{
    return WithElement(name, table.empty() ? kDetailTable : table, user, [&](const TextureElement& element) {
        const std::vector<std::uint8_t> pixels = TurnedForPreview(element);
        CTextureMgrImp textures;
        std::uint32_t made = 0;
        if (!textures.GenerateTexture(Signed(element.width), Signed(element.height), element.bitsPerPixel,
                                      pixels.data(), &made) ||
            made == 0)
            return E_FAIL;
        // The upload's own filters went to the texture that was bound before.
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        *textureName = made;
        return S_OK;
    });
}

}  // namespace tessara
