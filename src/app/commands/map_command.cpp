#include "app/commands/commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/terrain_options.h"
#include "app/options/text_checks.h"
#include "app/options/view_options.h"
#include "app/output/output_check.h"
#include "app/output/png_file.h"
#include "app/output/report.h"
#include "app/view/palettes.h"
#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tessara {

namespace {

struct MapOptions {
    TerrainInput input;
    std::string output;
    std::string palette;
};

/// A texture service that keeps the picture of the last texture in place of uploading it: so the map comes out pixel
/// for pixel as the surface paints it, at any size and without OpenGL.
class PictureKeeper final : public ComObject<ITextureMgr> {
public:
    HRESULT STDMETHODCALLTYPE CreateTexture(LONG width, LONG height, LONG bitsPerPixel, const void* pixels,
                                            ULONG* id) override
    {
        const auto* first = static_cast<const std::uint8_t*>(pixels);
        pixels_.assign(first, first + static_cast<std::ptrdiff_t>(width) * height * bitsPerPixel / 8);
        width_ = width;
        height_ = height;
        *id = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UnbindTexture() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ReleaseTexture(ULONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE BindTexture(ULONG) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetTextureData(ULONG, LONG*, LONG*, LONG*, LONG, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SelectTextureUnit(ULONG) override { return E_NOTIMPL; }
    LONG STDMETHODCALLTYPE HasMultitexture() override { return 0; }
    HRESULT STDMETHODCALLTYPE SetElementName(BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetTextureName(BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetImplementation(CTextureMgrImp** implementation) override
    {
        *implementation = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ResetTextureUnit() override { return S_OK; }

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }

    /// The picture as red, green and blue, the top row first; the surface gives blue first and the bottom row first.
    std::vector<std::uint8_t> TopDown() const
    {
        std::vector<std::uint8_t> picture;
        picture.reserve(pixels_.size());
        const std::size_t row = static_cast<std::size_t>(width_) * 3;
        for (std::size_t first = pixels_.size(); first >= row && row > 0; first -= row) {
            for (std::size_t at = first - row; at < first; at += 3)
                picture.insert(picture.end(), {pixels_[at + 2], pixels_[at + 1], pixels_[at]});
        }
        return picture;
    }

private:
    std::vector<std::uint8_t> pixels_;
    int width_ = 0;
    int height_ = 0;
};

void WriteMap(const MapOptions& options)
{
    const std::string output = CheckedOutput(options.output, {options.input.file}, {".png"});
    const auto progress = MakeObject<ConsoleProgress>();
    ViewOptions view;
    const LoadedTerrain loaded = LoadTerrain(options.input, view.aim, *progress);
    const auto keeper = MakeObject<PictureKeeper>();
    const auto host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(keeper.Get()), ComPtr<IProgressWindow>(progress.Get()));
    const auto palette = loaded.Colours(options.palette, "classic");
    TerrainOptions terrainOptions;
    terrainOptions.palette = palette.get();
    terrainOptions.elevations = loaded.SavedElevations();
    terrainOptions.buildTree = false;
    const TerrainSession terrain(loaded.data, terrainOptions, ComPtr<IKvoHost>(host.Get()));
    if (FAILED(terrain.Surface().CreateTextureSurface2D()) || keeper->Width() == 0)
        throw std::runtime_error("There is not enough memory for the map.");
    WritePng(output, keeper->Width(), keeper->Height(), keeper->TopDown());
    progress->Clear();
    PrintWritten(std::to_string(keeper->Width()) + " x " + std::to_string(keeper->Height()) + " pixels", output);
}

}  // namespace

void AddMapCommand(CLI::App& program)
{
    const auto options = std::make_shared<MapOptions>();
    CLI::App& command =
        *program.add_subcommand("map", "Write the heights as a flat picture, one pixel a cell, north up")
             ->group("Commands");
    AddTerrainInput(command, options->input);
    command.add_option("-o,--output", options->output, "The picture to write; - writes it to the standard output")
        ->check(NotEmpty())
        ->required()
        ->option_text("MAP.png");
    command.add_option("--palette", options->palette, "Colours of the heights [classic, or those of the project]")
        ->check(OneOf(PaletteNames()))
        ->option_text("classic|natural|desert|grey");
    command.callback([options] { WriteMap(*options); });
}

}  // namespace tessara
