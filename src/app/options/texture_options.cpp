#include "app/options/texture_options.h"

#include "app/input/image_reader.h"
#include "app/input/texture_lookup.h"
#include "app/options/number_range.h"
#include "app/options/text_checks.h"
#include "app/view/saved_textures.h"
#include "host/console_progress.h"
#include "host/memory_place.h"
#include "host/project/project_place.h"
#include "host/project/project_view.h"
#include "persistence/saved_textures.h"
#include "platform/com/bstr.h"
#include "surface/itessara.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <optional>
#include <stdexcept>
#include <vector>

namespace tessara {

namespace {

constexpr LONG kLowBrightness = 1;
constexpr LONG kHighBrightness = 2;

/// An image file in the form in which it is saved.
struct SourceImage {
    explicit SourceImage(const std::string& file)
    {
        const TextureElement element = ReadImage(file);
        bytes = WithFourChannels(element);
        image.width = static_cast<LONG>(element.width);
        image.height = static_cast<LONG>(element.height);
        image.pixels = bytes;
    }

    std::vector<std::uint8_t> bytes;
    SavedImage image;
};

/// A surface takes an image without asking the user for a file when it loads it.
void ApplySource(ITessara& surface, const std::string& file)
{
    const SourceImage source(file);
    const auto place = MakeObject<MemoryPlace>();
    SavedTextures saved;
    saved.source = source.image;
    saved.settings.usingDetail = 0;
    saved.settings.usingSource = 1;
    saved.Write(*place);
    if (FAILED(surface.LoadSerializedTextures(place.Get())) || !HasSource(surface))
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

SavedDetail SavedDetailOf(const std::string& name)
{
    const DetailTexture found = FindDetailTexture(name);
    return {found.key, kDetailTable, found.ofUser ? "USERDB" : "APPDB", found.displayName};
}

}  // namespace

void AddTextureOptions(CLI::App& command, TextureOptions& options)
{
    command.add_option("--source", options.source, "Image to stretch over the terrain, north up")
        ->check(NotEmpty())
        ->option_text("IMAGE");
    command.add_option("--detail", options.detail, "Detail texture to tile over the terrain, by its name")
        ->check(NotEmpty())
        ->option_text("NAME");
    command
        .add_option_function<std::vector<float>>(
            "--tiling",
            [&options](const std::vector<float>& repeats) {
                options.tiling = {repeats[0], repeats[1]};
            },
            "Repeats of the detail texture, eastwards and southwards [16 16]")
        ->expected(2)
        ->check(Number())
        ->option_text("X Y");
    command
        .add_option_function<std::string>(
            "--brightness", [&options](const std::string& level) { options.brighten = level == "high"; },
            "Brightness under the detail texture; high doubles it [low]")
        ->check(OneOf({"low", "high"}))
        ->option_text("low|high");
    command.add_flag("--no-source", options.withoutSource, "Leave the image of a project out")->excludes("--source");
    command.add_flag("--no-detail", options.withoutDetail, "Leave the detail texture of a project out")
        ->excludes("--detail");
    command.add_flag_callback(
        "--color", [&options] { options.color = true; }, "Show the colours of the heights where a project doesn't");
    command
        .add_flag_callback(
            "--no-color", [&options] { options.color = false; }, "Leave the colours of the heights out")
        ->excludes("--color");
    command.add_flag_callback(
        "--mix-color", [&options] { options.mixColor = true; },
        "Multiply the image by the colours of the heights,\nwhich it hides otherwise");
    command
        .add_flag_callback(
            "--no-mix-color", [&options] { options.mixColor = false; },
            "Show an image in its own colours where a project mixes them")
        ->excludes("--mix-color");
}

void Remember(const TextureOptions& options, ProjectView& remembered)
{
    remembered.color = options.color;
    remembered.mixColors = options.mixColor;
}

void RefuseIdleOptions(const TextureOptions& options, bool hasDetail)
{
    if (hasDetail || !options.detail.empty())
        return;
    constexpr const char* kReason = "has no effect without --detail";
    if (options.tiling)
        throw CLI::ValidationError("--tiling", kReason);
    if (options.brighten)
        throw CLI::ValidationError("--brightness", kReason);
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
}

void SaveTextures(ProjectPlace& place, const TextureOptions& options)
{
    SavedTextures saved;
    std::optional<SourceImage> source;
    if (!options.source.empty()) {
        saved.source = source.emplace(options.source).image;
        saved.settings.usingSource = 1;
    }
    if (!options.detail.empty()) {
        saved.detail = SavedDetailOf(options.detail);
        saved.settings.usingDetail = 1;
        saved.settings.rgbGamma = kLowBrightness;
    }
    if (options.withoutSource)
        saved.settings.usingSource = 0;
    if (options.withoutDetail)
        saved.settings.usingDetail = 0;
    if (options.tiling) {
        saved.settings.tilingX = options.tiling->first;
        saved.settings.tilingY = options.tiling->second;
    }
    if (options.brighten)
        saved.settings.rgbGamma = *options.brighten ? kHighBrightness : kLowBrightness;
    saved.Write(place);
}

}  // namespace tessara
