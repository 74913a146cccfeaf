#include "app/options/terrain_input.h"

#include "app/options/number_range.h"
#include "app/options/view_options.h"
#include "app/view/palettes.h"
#include "host/console_progress.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"
#include "samples/country/sample_terrain.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <map>
#include <stdexcept>
#include <utility>

namespace tessara {

void AddTerrainInput(CLI::App& command, TerrainInput& input)
{
    command
        .add_option("FILE", input.file,
                    "Elevation file: GeoTIFF, SRTM HGT, ESRI ASCII grid, USGS DEM,\n"
                    "16-bit PNG and others; /vsistdin/ for the standard input; or\n"
                    "a project [the built-in sample]")
        ->option_text(" ");
    command.add_option("--terrain", input.element, "Which terrain of a project [the first]")->option_text("NAME");
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
        .add_option("--height-unit", input.reading.heightUnit,
                    "Unit of the file's heights: m, ft, us-ft and others [as the\n"
                    "file says]")
        ->option_text("UNIT");
    command
        .add_option("--grid", input.reading.grid,
                    "Which grid of a file that holds several, as a NetCDF file's\n"
                    "variable [the only one]")
        ->option_text("NAME");
    command.add_option("--band", input.reading.band, "Which band of the file, from 1 on [the first]")
        ->check(NumberBetween(1, 65535))
        ->option_text("N");
    command
        .add_option("--max-cells", input.reading.maximumCells,
                    "A file of more cells is read at a lower resolution [16785409]")
        ->check(NumberBetween(4, 1 << 30))
        ->option_text("N");
    command.add_option("--exaggeration", input.exaggeration, "Factor on heights; 1 shows true proportions [1]")
        ->check(NumberBetween(0.001, 1000.0))
        ->option_text("FACTOR");
}

namespace {

ElevationData ReadElevations(const TerrainInput& input, ConsoleProgress& progress)
{
    const auto show = [&](const char* title) {
        return [&progress, title](double fraction) { progress.Show(title, fraction); };
    };
    ElevationData data = input.file.empty()
                             ? MakeSampleTerrain(kSampleTerrainSize, kSampleTerrainSeed, show("Making the sample"))
                             : ReadElevationFile(input.file, input.reading, show("Reading"));
    progress.Clear();
    if (!input.file.empty()) {
        for (const std::string& note : data.notes)
            progress.Say(input.file + ": " + note);
    }
    return data;
}

LoadedTerrain ReadProject(const TerrainInput& input)
{
    LoadedTerrain loaded;
    loaded.place = OpenElement(input.file, input.element);
    ProjectTerrain terrain = ReadTerrain(*loaded.place);
    loaded.span = MeasureSpan(terrain.data);
    loaded.look = LookIn(terrain, loaded.place->Settings(), loaded.span);
    loaded.data = std::move(terrain.data);
    loaded.exaggeration = terrain.exaggeration;
    loaded.elevations = std::move(terrain.elevations);
    loaded.palette = std::make_unique<ElevationPalette>(terrain.palette);
    loaded.view = std::move(terrain.view);
    return loaded;
}

}  // namespace

ComPtr<ProjectPlace> OpenElement(const std::string& project, const std::string& element)
{
    const ProjectFile file(project);
    if (file.Elements().empty())
        throw std::runtime_error("The project \"" + project + "\" has no terrain.");
    ComPtr<ProjectPlace> place = file.Open(element.empty() ? file.Elements().front() : element);
    if (!place)
        throw std::runtime_error("The project \"" + project + "\" has no terrain of the name \"" + element + "\".");
    return place;
}

LoadedTerrain LoadTerrain(const TerrainInput& input, ViewOptions& view, ConsoleProgress& progress)
{
    LoadedTerrain loaded;
    if (!input.file.empty() && IsProjectFile(input.file)) {
        loaded = ReadProject(input);
    } else {
        loaded.data = ReadElevations(input, progress);
        loaded.span = MeasureSpan(loaded.data);
        loaded.look.colors = {PaletteNames().front(), static_cast<double>(loaded.span.lowest),
                              static_cast<double>(loaded.span.highest)};
    }
    loaded.exaggeration = input.exaggeration.value_or(loaded.exaggeration);
    FillIn(view.aim, AimOf(loaded.view));
    return loaded;
}

std::unique_ptr<ElevationPalette> LoadedTerrain::Colours(const std::string& asked, const std::string& otherwise) const
{
    if (asked.empty() && palette)
        return std::make_unique<ElevationPalette>(*palette);
    return MakePalette(asked.empty() ? otherwise : asked);
}

std::string NameOf(const TerrainInput& input)
{
    return input.file.empty() ? "the built-in sample" : input.file;
}

}  // namespace tessara
