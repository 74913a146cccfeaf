#include "app/commands/commands.h"
#include "app/options/number_range.h"
#include "app/output/output_check.h"
#include "host/console_progress.h"
#include "host/elevation/elevation_writer.h"
#include "samples/country/sample_terrain.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <iostream>
#include <memory>

namespace tessara {

namespace {

struct SampleOptions {
    std::string output;
    int size = kSampleTerrainSize;
    std::uint32_t seed = kSampleTerrainSeed;
};

void WriteSample(const SampleOptions& options)
{
    RequireWritable(options.output, {});
    const auto progress = MakeObject<ConsoleProgress>();
    const ElevationData data = MakeSampleTerrain(
        options.size, options.seed, [&](double fraction) { progress->Show("Making the sample", fraction); });
    WriteElevationFile(data, options.output);
    progress->Clear();
    std::cout << data.width << " x " << data.height << " heights\n" << options.output << '\n';
}

}  // namespace

void AddSampleCommand(CLI::App& program)
{
    const auto options = std::make_shared<SampleOptions>();
    CLI::App& command =
        *program.add_subcommand("sample", "Write the built-in sample terrain as an elevation file")->group("Commands");
    command
        .add_option("-o,--output", options->output,
                    "The elevation file to write: .tif for a GeoTIFF, .asc for an\n"
                    "ESRI ASCII grid, .png for a 16-bit PNG")
        ->required()
        ->option_text("FILE");
    command.add_option("--size", options->size, "Heights along an edge [513]")
        ->check(NumberBetween(kSmallestSampleSize, kLargestSampleSize))
        ->option_text("N");
    command.add_option("--seed", options->seed, "Another number makes another terrain")->option_text("N");
    command.callback([options] { WriteSample(*options); });
}

}  // namespace tessara
