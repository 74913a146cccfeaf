#include "app/commands/commands.h"
#include "app/options/number_range.h"
#include "app/options/text_checks.h"
#include "app/output/output_check.h"
#include "app/output/report.h"
#include "host/console_progress.h"
#include "host/elevation/elevation_writer.h"
#include "samples/country/sample_terrain.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

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
    const std::string output = CheckedOutput(options.output, {}, {".tif", ".tiff", ".asc", ".png"});
    const auto progress = MakeObject<ConsoleProgress>();
    const ElevationData data = MakeSampleTerrain(
        options.size, options.seed, [&](double fraction) { progress->Show("Making the sample", fraction); });
    WriteElevationFile(data, output);
    progress->Clear();
    PrintWritten(std::to_string(data.width) + " x " + std::to_string(data.height) + " heights", output);
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
                    "ESRI ASCII grid, .png for a 16-bit PNG; - writes a GeoTIFF to\n"
                    "the standard output")
        ->check(NotEmpty())
        ->required()
        ->option_text("FILE");
    command.add_option("--size", options->size, "Heights along an edge [513]")
        ->check(WholeNumberBetween(kSmallestSampleSize, kLargestSampleSize))
        ->option_text("N");
    command.add_option("--seed", options->seed, "Another number makes another terrain")
        ->check(WholeNumberBetween(0, 4294967295.0))
        ->option_text("N");
    command.callback([options] { WriteSample(*options); });
}

}  // namespace tessara
