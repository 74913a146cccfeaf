#include "persistence/saved_place.h"
#include "services/texture_mgr.h"
#include "surface/co_tessara.h"
#include "terrain/terrain_lod.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using tessara::Reading;
using tessara::SavedPlace;

namespace {

enum TextureValue : std::size_t {
    SourceWidth,
    SourceHeight,
    SourceData,
    DetailName,
    DetailTable,
    Database,
    DetailDisplayName,
    UsingDetail,
    UsingSource,
    TilingX,
    TilingY,
    RgbGamma,
    SourceBits,
};

// The depth of the pixels is written only where it isn't the 32 bits that every reader takes them for, and last, so
// that a reader that doesn't know it finds what it always found.
constexpr tessara::SavedValue kTextureValues[] = {
    {"TEXTURE_SRC_WIDTH", tessara::kSizes, tessara::kIntegers},
    {"TEXTURE_SRC_HEIGHT", tessara::kSizes, tessara::kIntegers},
    {"TEXTURE_SRC_DATA", tessara::kPixels, tessara::kBytes},
    {"TEXTURE_DET_NAME", tessara::kText, tessara::kText},
    {"TEXTURE_DET_TABLE", tessara::kText, tessara::kText},
    {"DATABASE", tessara::kText, tessara::kText},
    {"TEXTURE_DET_NAME_USER", tessara::kText, tessara::kText},
    {"IS_USING_DETAIL", tessara::kIntegers, tessara::kIntegers},
    {"IS_USING_SOURCE", tessara::kIntegers, tessara::kIntegers},
    {"DETAIL_TILINGX", tessara::kFloats, tessara::kFloats},
    {"DETAIL_TILINGY", tessara::kFloats, tessara::kFloats},
    {"DETAIL_RGBGAMMA", tessara::kIntegers, tessara::kIntegers},
    {"TEXTURE_SRC_BITS", tessara::kIntegers, tessara::kIntegers},
};

constexpr LONG kDefaultBits = 32;
constexpr std::size_t kTextCapacity = 1024;  // with the terminator

bool IsDepth(LONG bits)
{
    return bits == 8 || bits == 24 || bits == 32;
}

/// The image of a texture, as the texture service gives it.
struct Image {
    LONG width = 0;
    LONG height = 0;
    LONG bits = kDefaultBits;
    std::unique_ptr<void, void (*)(void*)> pixels{nullptr, &CoTaskMemFree};  // null where there is none to save

    std::size_t Size() const { return tessara::BlockSize(width, height, static_cast<std::size_t>(bits / 8)); }
};

Image ReadBack(ITextureMgr& textures, ULONG id)
{
    Image image;
    textures.ResetTextureUnit();
    textures.BindTexture(id);
    void* pixels = nullptr;
    const HRESULT result = textures.GetTextureData(id, &image.width, &image.height, &image.bits, 0, &pixels);
    image.pixels.reset(pixels);
    if (FAILED(result) || !IsDepth(image.bits))
        image.pixels.reset();
    return image;
}

/// Writes a text with its terminator, cut where a reader's buffer ends, but not within a character.
void WriteText(SavedPlace& place, std::size_t value, const std::string& text)
{
    char bytes[kTextCapacity] = {};
    const std::string_view whole = text.c_str();
    std::size_t length = std::min(whole.size(), kTextCapacity - 1);
    while (length < whole.size() && length > 0 && (whole[length] & 0xC0) == 0x80)
        --length;
    whole.copy(bytes, length);
    place.Write(value, bytes, length + 1);
}

/// Room for any text, so that taking one needs no more memory.
class TextRoom {
public:
    TextRoom() { text_.reserve(kTextCapacity); }

    /// Reads a text into a field, or leaves the field as it was.
    void Read(SavedPlace& place, std::size_t value, std::string& field)
    {
        char bytes[kTextCapacity] = {};
        if (place.Read(value, bytes) != Reading::Read)
            return;
        bytes[kTextCapacity - 1] = 0;
        text_.assign(bytes);
        field.swap(text_);
    }

private:
    std::string text_;
};

}  // namespace

HRESULT CoTessara::SerializeTextures(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            SavedPlace place(pIParser, kTextureValues);
            // An empty slot would be described by whichever texture happens to be bound.
            const Image image =
                m_pTextureMgr && m_textureId[Source] != 0 ? ReadBack(*m_pTextureMgr, m_textureId[Source]) : Image();
            if (image.pixels) {
                const std::size_t size = image.Size();
                if (size == 0 && image.width != 0 && image.height != 0)
                    return E_FAIL;
                place.Write(SourceWidth, &image.width, sizeof image.width);
                place.Write(SourceHeight, &image.height, sizeof image.height);
                place.Write(SourceData, image.pixels.get(), size);
            }
            WriteText(place, DetailName, m_detailName);
            WriteText(place, DetailTable, m_detailTable);
            WriteText(place, Database, m_database);
            WriteText(place, DetailDisplayName, m_userTextureName);
            SaveTextureSettings(place);
            if (image.pixels && image.bits != kDefaultBits)
                place.Write(SourceBits, &image.bits, sizeof image.bits);
            return S_OK;
        },
        E_FAIL);
}

void CoTessara::SaveTextureSettings(SavedPlace& place)
{
    LONG usingDetail = 0;
    LONG usingSource = 0;
    float tiling[2] = {};
    int gamma = 0;
    IsUsingTextureDetail(&usingDetail);
    IsUsingTextureSource(&usingSource);
    GetTextureDetailTiling(&tiling[0], &tiling[1]);
    GetTextureDetailRGBGamma(&gamma);
    place.Write(UsingDetail, &usingDetail, sizeof usingDetail);
    place.Write(UsingSource, &usingSource, sizeof usingSource);
    place.Write(TilingX, &tiling[0], sizeof tiling[0]);
    place.Write(TilingY, &tiling[1], sizeof tiling[1]);
    place.Write(RgbGamma, &gamma, sizeof gamma);
}

HRESULT CoTessara::LoadSerializedTextures(IUnknown* pIParser)
{
    if (!pIParser || !m_pTerrain)
        return E_FAIL;
    return Guard(
        [&]() -> HRESULT {
            SavedPlace place(pIParser, kTextureValues);
            TextRoom name;
            TextRoom displayName;
            TextRoom table;
            TextRoom database;
            if (FAILED(LoadSource(place)))
                return E_FAIL;
            // From here on nothing fails for want of memory but the detail texture, and its failure has an answer.
            name.Read(place, DetailName, m_detailName);
            displayName.Read(place, DetailDisplayName, m_userTextureName);
            table.Read(place, DetailTable, m_detailTable);
            database.Read(place, Database, m_database);
            const bool hasDetail = !m_detailTable.empty() && !m_detailName.empty();
            if (hasDetail && FAILED(LoadDetail()))
                TextureDetailDlg();
            LoadTextureSettings(place);
            return hasDetail ? S_FALSE : S_OK;
        },
        E_FAIL);
}

/// Puts the saved image into the source slot. Without one the slot stays as it is.
HRESULT CoTessara::LoadSource(SavedPlace& place)
{
    LONG width = 0;
    LONG height = 0;
    place.ReadInteger(SourceWidth, &width);
    place.ReadInteger(SourceHeight, &height);
    ParserNode node = nullptr;
    if (width == 0 || height == 0 || !place.Find(SourceData, &node))
        return S_OK;
    const std::size_t size = tessara::BlockSize(width, height, kDefaultBits / 8);
    if (size == 0)
        return E_FAIL;
    std::vector<BYTE> pixels(size);
    if (place.Fetch(SourceData, node, pixels.data()) != Reading::Read)
        return S_OK;
    LONG bits = kDefaultBits;
    if (place.ReadInteger(SourceBits, &bits) != Reading::Read || !IsDepth(bits))
        bits = kDefaultBits;
    if (!m_pTextureMgr)
        return E_FAIL;
    const HRESULT result = CreateSlotTexture(Source, width, height, bits, pixels.data());
    m_pTextureMgr->UnbindTexture();
    return result;
}

/// Takes the detail texture that the fields name from its database.
HRESULT CoTessara::LoadDetail()
{
    return Guard([this] {
        const tessara::BstrHolder name(m_detailName);
        const tessara::BstrHolder table(m_detailTable);
        VARIANT user;
        VariantInit(&user);
        return SetTextureDetailFromDB(name.Get(), table.Get(), m_database == "USERDB" ? &user : nullptr);
    });
}

void CoTessara::LoadTextureSettings(SavedPlace& place)
{
    float tiling = 0.0f;
    if (place.ReadFloats(TilingX, {&tiling, 1}) == Reading::Read)
        SetTextureDetailTiling(&tiling, nullptr);
    if (place.ReadFloats(TilingY, {&tiling, 1}) == Reading::Read)
        SetTextureDetailTiling(nullptr, &tiling);
    LONG number = 0;
    if (place.ReadInteger(RgbGamma, &number) == Reading::Read)
        SetTextureDetailRGBGamma(number);
    // Projects from before there were switches have both on.
    const auto readSwitch = [&place, &number](TextureValue value) {
        const Reading result = place.ReadInteger(value, &number);
        if (result == Reading::Missing)
            number = 1;
        return result != Reading::Unreadable;
    };
    if (readSwitch(UsingDetail))
        UseTextureDetail(number);
    if (readSwitch(UsingSource))
        UseTextureSource(number);
}
