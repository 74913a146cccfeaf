#include "app/options/texture_options.h"

#include "app/input/image_reader.h"
#include "app/input/texture_lookup.h"
#include "app/options/number_list.h"
#include "host/textures/database_place.h"
#include "platform/com/bstr.h"
#include "platform/com/com_object.h"
#include "services/parser.h"
#include "surface/itessara.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace tessara {

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(std::int32_t value)
{
    Bytes bytes(sizeof(value));
    std::memcpy(bytes.data(), &value, sizeof(value));
    return bytes;
}

/// A place of a project that exists in memory alone and holds nothing but a source texture: the way by which a surface
/// takes an image without asking the user for a file.
class SourceValues final : public ComObject<IParser> {
public:
    /// \param pixels four bytes each, blue, green, red and alpha; the first row comes to lie in the north
    SourceValues(std::int32_t width, std::int32_t height, Bytes pixels)
        : values_{{"TEXTURE_SRC_WIDTH", BytesOf(width)},
                  {"TEXTURE_SRC_HEIGHT", BytesOf(height)},
                  {"TEXTURE_SRC_DATA", std::move(pixels)},
                  {"IS_USING_DETAIL", BytesOf(0)},
                  {"IS_USING_SOURCE", BytesOf(1)}}
    {
    }

    HRESULT STDMETHODCALLTYPE AddNode(ParserNode, BSTR name, const void*, LONG, LONG) override
    {
        SysFreeString(name);
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE GetNodeValue(ParserNode node, void* buffer, LONG* count, LONG) override
    {
        const Bytes& bytes = static_cast<const Value*>(node)->second;
        std::memcpy(buffer, bytes.data(), bytes.size());
        *count = 1;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE FindNode(ParserNode, BSTR name, LONG, ParserNode* node) override
    {
        const std::string wanted = NarrowText(name);
        SysFreeString(name);
        for (Value& value : values_) {
            if (value.first == wanted) {
                *node = &value;
                return S_OK;
            }
        }
        return E_FAIL;
    }

private:
    using Value = std::pair<std::string_view, Bytes>;
    std::vector<Value> values_;
};

/// Pixels of an image as blue, green, red and alpha, the top row first: north is the first row of the terrain.
Bytes NorthFirst(const TextureElement& image)
{
    const std::size_t depth = image.bitsPerPixel / 8u;
    const std::size_t columns = image.width;
    Bytes pixels;
    pixels.reserve(columns * image.height * 4);
    for (std::size_t y = image.height; y-- > 0;) {
        const std::uint8_t* pixel = image.pixels.data() + y * columns * depth;
        for (std::size_t x = 0; x < columns; ++x, pixel += depth) {
            for (const std::size_t channel : {0u, 1u, 2u})
                pixels.push_back(pixel[depth == 1 ? 0 : channel]);
            pixels.push_back(depth == 4 ? pixel[3] : 255);
        }
    }
    return pixels;
}

void ApplySource(ITessara& surface, const std::string& file)
{
    const TextureElement image = ReadImage(file);
    const auto values = MakeObject<SourceValues>(static_cast<std::int32_t>(image.width),
                                                 static_cast<std::int32_t>(image.height), NorthFirst(image));
    LONG used = 0;
    if (FAILED(surface.LoadSerializedTextures(values.Get())) || FAILED(surface.IsUsingTextureSource(&used)) ||
        FAILED(surface.ActivateSourceTexture()))
        throw std::runtime_error("OpenGL can't hold the image " + file + ".");
}

/// Takes the texture from a database that has it. \return whether it did
bool TakeDetail(ITessara& surface, const DatabasePlace& place, const std::string& name, VARIANT* selector)
{
    const auto store = place.Open();
    const auto key = store ? KeyOf(*store, name) : std::nullopt;
    if (!key)
        return false;
    return SUCCEEDED(surface.SetTextureDetailFromDB(BstrHolder(*key).Get(), BstrHolder(kDetailTable).Get(), selector));
}

/// The user's own textures come first.
void ApplyDetail(ITessara& surface, const TextureOptions& options)
{
    VARIANT user;
    VariantInit(&user);
    if (!TakeDetail(surface, UserDatabase(), options.detail, &user) &&
        !TakeDetail(surface, SystemDatabase(), options.detail, nullptr))
        throw std::runtime_error("There is no texture \"" + options.detail +
                                 "\". \"tessara textures list\" tells what there is.");
    float x = options.tilingX;
    float y = options.tilingY;
    surface.SetTextureDetailTiling(&x, &y);
    surface.SetTextureDetailRGBGamma(options.brighten ? 2 : 1);
    surface.UseTextureDetail(1);
}

}  // namespace

void AddTextureOptions(CLI::App& command, TextureOptions& options)
{
    command.add_option("--source", options.source, "Image to stretch over the terrain, north up")->option_text("IMAGE");
    command.add_option("--detail", options.detail, "Detail texture to tile over the terrain, by its name")
        ->option_text("NAME");
    command
        .add_option_function<std::vector<float>>(
            "--tiling",
            [&options](const std::vector<float>& repeats) {
                options.tilingX = repeats[0];
                options.tilingY = repeats[1];
            },
            "Repeats of the detail texture, eastwards and southwards [16 16]")
        ->expected(2)
        ->option_text("X Y");
    command
        .add_option_function<std::string>(
            "--brightness", [&options](const std::string& level) { options.brighten = level == "high"; },
            "Brightness under the detail texture; high doubles it [low]")
        ->check(CLI::IsMember({"low", "high"}))
        ->option_text("low|high");
    command.add_flag_callback(
        "--no-color", [&options] { options.color = false; }, "Leave the colours of the heights out");
}

void ApplyTextures(ITessara& surface, const TextureOptions& options)
{
    if (!options.source.empty())
        ApplySource(surface, options.source);
    if (!options.detail.empty())
        ApplyDetail(surface, options);
    surface.UseColor(options.color ? 1 : 0);
}

}  // namespace tessara
