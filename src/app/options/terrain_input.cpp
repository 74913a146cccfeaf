#include "app/options/terrain_input.h"

#include "app/options/number_range.h"
#include "host/console_progress.h"
#include "host/elevation/sample_terrain.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <map>

namespace tessara {

void AddTerrainInput(CLI::App& command, TerrainInput& input)
{
    command
        .add_option("FILE", input.file,
                    "Elevation file: GeoTIFF, SRTM HGT, ESRI ASCII grid, USGS DEM,\n"
                    "16-bit PNG and others [the built-in sample]")
        ->option_text(" ");
    const std::map<std::string, ElevationFill> fills{{"lowest", ElevationFill::Lowest},
                                                     {"smooth", ElevationFill::Smooth}};
    command
        .add_option("--fill", input.reading.fill,
                    "What cells without data get: a surface that runs smoothly from\n"
                    "their border, or the lowest height [smooth]")
        ->transform(CLI::CheckedTransformer(fills))
        ->option_text("smooth|lowest");
    command.add_option("--spacing", input.reading.spacing, "Metres from one cell to the next [as the file says]")
        ->check(NumberBetween(1e-6, 1e6))
        ->option_text("METRES");
    command.add_option("--no-data", input.reading.noData, "A height that means no data [as the file says]")
        ->option_text("HEIGHT");
    command
        .add_option("--max-cells", input.reading.maximumCells,
                    "A file of more cells is read at a lower resolution [16785409]")
        ->check(NumberBetween(4, 1 << 30))
        ->option_text("N");
    command.add_option("--exaggeration", input.exaggeration, "Factor on heights; 1 shows true proportions [1]")
        ->check(NumberBetween(0.001, 1000.0))
        ->option_text("FACTOR");
}

ElevationData LoadTerrain(const TerrainInput& input, ConsoleProgress& progress)
{
    const auto show = [&](const char* title) {
        return [&progress, title](double fraction) { progress.Show(title, fraction); };
    };
    if (input.file.empty()) {
        ElevationData data = MakeSampleTerrain(kSampleTerrainSize, kSampleTerrainSeed, show("Making the sample"));
        progress.Clear();
        return data;
    }
    ElevationData data = ReadElevationFile(input.file, input.reading, show("Reading"));
    progress.Clear();
    for (const std::string& note : data.notes)
        progress.Say(input.file + ": " + note);
    return data;
}

std::string NameOf(const TerrainInput& input)
{
    return input.file.empty() ? "the built-in sample" : input.file;
}

}  // namespace tessara
