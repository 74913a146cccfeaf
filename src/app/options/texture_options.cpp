#include "app/options/texture_options.h"

#include "app/input/image_reader.h"
#include "app/input/texture_lookup.h"
#include "app/options/number_list.h"
#include "app/view/saved_textures.h"
#include "host/console_progress.h"
#include "host/project/project_place.h"
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

constexpr std::int32_t kLowBrightness = 1;
constexpr std::int32_t kHighBrightness = 2;

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

void ApplyDetail(ITessara& surface, const std::string& name)
{
    const DetailTexture found = FindDetailTexture(name);
    VARIANT user;
    VariantInit(&user);
    if (FAILED(surface.SetTextureDetailFromDB(BstrHolder(found.key).Get(), BstrHolder(kDetailTable).Get(),
                                              found.ofUser ? &user : nullptr)))
        throw std::runtime_error("The texture \"" + name + "\" can't be taken from its database.");
    surface.SetTextureDetailRGBGamma(kLowBrightness);
    surface.UseTextureDetail(1);
}

void ApplySaved(ITessara& surface, ProjectPlace& saved, ConsoleProgress& progress)
{
    const std::string missing = TakeSavedTextures(surface, saved);
    if (!missing.empty())
        progress.Say("The detail texture \"" + missing + "\" of the terrain \"" + saved.Name() +
                     "\" is in no database any more: it is left out.");
}

void WriteInteger(ProjectPlace& place, const char* name, std::int32_t number)
{
    place.Write(name, 2, &number, sizeof number);
}

void WriteText(ProjectPlace& place, const char* name, const std::string& text)
{
    place.Write(name, 0x40, text.c_str(), text.size() + 1);
}

void SaveSource(ProjectPlace& place, const std::string& file)
{
    const TextureElement image = ReadImage(file);
    const Bytes pixels = NorthFirst(image);
    const auto width = static_cast<std::int32_t>(image.width);
    const auto height = static_cast<std::int32_t>(image.height);
    place.Write("TEXTURE_SRC_WIDTH", 8, &width, sizeof width);
    place.Write("TEXTURE_SRC_HEIGHT", 8, &height, sizeof height);
    place.Write("TEXTURE_SRC_DATA", 0x280, pixels.data(), pixels.size());
    WriteInteger(place, "TEXTURE_SRC_BITS", 32);
    WriteInteger(place, "IS_USING_SOURCE", 1);
}

void SaveDetail(ProjectPlace& place, const std::string& name)
{
    const DetailTexture found = FindDetailTexture(name);
    WriteText(place, "TEXTURE_DET_NAME", found.key);
    WriteText(place, "TEXTURE_DET_TABLE", kDetailTable);
    WriteText(place, "TEXTURE_DET_NAME_USER", found.displayName);
    WriteText(place, "DATABASE", found.ofUser ? "USERDB" : "APPDB");
    WriteInteger(place, "DETAIL_RGBGAMMA", kLowBrightness);
    WriteInteger(place, "IS_USING_DETAIL", 1);
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
                options.tiling = {repeats[0], repeats[1]};
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
    command.add_flag("--no-source", options.withoutSource, "Leave the image of a project out")->excludes("--source");
    command.add_flag("--no-detail", options.withoutDetail, "Leave the detail texture of a project out")
        ->excludes("--detail");
    command.add_flag_callback(
        "--color", [&options] { options.color = true; }, "Show the colours of the heights where a project doesn't");
    command.add_flag_callback(
        "--no-color", [&options] { options.color = false; }, "Leave the colours of the heights out");
}

void ApplyTextures(ITessara& surface, ProjectPlace* saved, const TextureOptions& options, ConsoleProgress& progress)
{
    if (saved)
        ApplySaved(surface, *saved, progress);
    if (!options.source.empty())
        ApplySource(surface, options.source);
    if (!options.detail.empty())
        ApplyDetail(surface, options.detail);
    if (options.withoutSource)
        surface.UseTextureSource(0);
    if (options.withoutDetail)
        surface.UseTextureDetail(0);
    if (options.tiling) {
        auto [x, y] = *options.tiling;
        surface.SetTextureDetailTiling(&x, &y);
    }
    if (options.brighten)
        surface.SetTextureDetailRGBGamma(*options.brighten ? kHighBrightness : kLowBrightness);
    surface.UseColor(options.color.value_or(true) ? 1 : 0);
}

void SaveTextures(ProjectPlace& place, const TextureOptions& options)
{
    if (!options.source.empty())
        SaveSource(place, options.source);
    if (!options.detail.empty())
        SaveDetail(place, options.detail);
    if (options.withoutSource)
        WriteInteger(place, "IS_USING_SOURCE", 0);
    if (options.withoutDetail)
        WriteInteger(place, "IS_USING_DETAIL", 0);
    if (options.tiling) {
        place.Write("DETAIL_TILINGX", 0x10, &options.tiling->first, sizeof(float));
        place.Write("DETAIL_TILINGY", 0x10, &options.tiling->second, sizeof(float));
    }
    if (options.brighten)
        WriteInteger(place, "DETAIL_RGBGAMMA", *options.brighten ? kHighBrightness : kLowBrightness);
}

}  // namespace tessara
