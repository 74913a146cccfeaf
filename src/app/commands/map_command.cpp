#include "app/commands/commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/look_options.h"
#include "app/options/terrain_options.h"
#include "app/options/text_checks.h"
#include "app/options/view_options.h"
#include "app/output/output_check.h"
#include "app/output/png_file.h"
#include "app/output/report.h"
#include "app/view/height_colors.h"
#include "app/view/palettes.h"
#include "app/view/sea.h"
#include "host/console_progress.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>
#include <optional>
#include <string>

namespace tessara {

namespace {

struct MapOptions {
    TerrainInput input;
    std::string output;
    std::string palette;
    std::optional<SeaChoice> sea{};
};

void WriteMap(const MapOptions& options)
{
    const std::string output = CheckedOutput(options.output, {options.input.file}, {".png"});
    const auto progress = MakeObject<ConsoleProgress>();
    ViewOptions view;
    LoadedTerrain loaded = LoadTerrain(options.input, view.aim, *progress);
    HeightColors colors = loaded.look.colors;
    if (!options.palette.empty() || !loaded.place)
        colors = {options.palette.empty() ? "classic" : options.palette, static_cast<double>(loaded.span.lowest),
                  static_cast<double>(loaded.span.highest)};
    ScanHeights(loaded.data);
    const std::optional<Sea> sea = SeaOf(loaded.data, options.sea.value_or(loaded.look.sea));
    if (sea)
        colors.sea = sea->level;
    const int width = loaded.data.width;
    const int height = loaded.data.height;
    WritePng(output, width, height, MapOfHeights(loaded.data, colors, sea ? &*sea : nullptr, width, height));
    progress->Clear();
    PrintWritten(std::to_string(width) + " x " + std::to_string(height) + " pixels", output);
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
    AddSeaOption(command, options->sea);
    command.callback([options] { WriteMap(*options); });
}

}  // namespace tessara
