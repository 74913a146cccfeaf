#include "app/options/terrain_options.h"

#include "app/input/loaded_terrain.h"
#include "app/options/number_list.h"
#include "app/options/number_range.h"
#include "app/options/text_checks.h"
#include "host/project/project_file.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <cmath>
#include <string>

namespace tessara {

namespace {

/// Which cells of the file.
void AddPart(CLI::App& command, ElevationReadOptions& reading)
{
    CLI::Option* const window =
        command
            .add_option_function<std::string>(
                "--window",
                [&reading](const std::string& text) {
                    const auto numbers = ParseNumbers(text, ',', 4);
                    const auto isCount = [](double number) { return number == std::floor(number) && number < 1e9; };
                    if (numbers.empty() || !std::all_of(numbers.begin(), numbers.end(), isCount) ||
                        std::min(numbers[0], numbers[1]) < 0.0 || std::min(numbers[2], numbers[3]) < 2.0)
                        throw CLI::ValidationError("--window", "expects the first column and row, counted from 0, and "
                                                               "2 columns and rows or more, such as "
                                                               "0,0,512,512, not " +
                                                                   text);
                    const auto whole = [&](std::size_t i) { return static_cast<int>(numbers[i]); };
                    reading.window = CellWindow{whole(0), whole(1), whole(2), whole(3)};
                },
                "Only these cells of the file, the north-west one being 0,0\n"
                "[all of them]")
            ->option_text("COLUMN,ROW,COLUMNS,ROWS");
    command
        .add_option_function<std::string>(
            "--extent",
            [&reading](const std::string& text) {
                const auto numbers = ParseNumbers(text, ',', 4);
                if (numbers.empty() || numbers[0] >= numbers[2] || numbers[1] >= numbers[3])
                    throw CLI::ValidationError("--extent", "expects the western, southern, eastern and northern edge, "
                                                           "west below east and south below north, not " +
                                                               text);
                reading.extent = MapExtent{numbers[0], numbers[1], numbers[2], numbers[3]};
            },
            "Only the cells that touch this part of the map, in the file's\n"
            "coordinates or in degrees of WGS 84 [all of them]")
        ->option_text("WEST,SOUTH,EAST,NORTH")
        ->excludes(window);
    command
        .add_option("--resolution", reading.resolution,
                    "Metres from one cell to the next that are enough: a finer file\n"
                    "is reduced by means [as the file has them]")
        ->check(NumberBetween(1e-6, 1e7))
        ->option_text("METRES");
}

}  // namespace

void AddTerrainInput(CLI::App& command, TerrainInput& input)
{
    input.command = &command;
    command
        .add_option("FILE", input.file,
                    "Elevation file: GeoTIFF, SRTM HGT, ESRI ASCII grid, USGS DEM,\n"
                    "16-bit PNG and others; /vsistdin/ for the standard input; or\n"
                    "a project [the built-in sample]")
        ->check(NotEmpty())
        ->option_text(" ");
    command.add_option("--terrain", input.element, "Which terrain of a project [the first]")->option_text("NAME");
    command
        .add_option_function<std::string>(
            "--fill",
            [&input](const std::string& fill) {
                input.reading.fill = fill == "lowest" ? ElevationFill::Lowest : ElevationFill::Smooth;
            },
            "What cells without data get: a surface that runs smoothly from\n"
            "their border, or the lowest height [smooth]")
        ->check(OneOf({"smooth", "lowest"}))
        ->option_text("smooth|lowest");
    command.add_option("--spacing", input.reading.spacing, "Metres from one cell to the next [as the file says]")
        ->check(NumberBetween(1e-6, 1e6))
        ->option_text("METRES");
    command.add_option("--no-data", input.reading.noData, "A height that means no data [as the file says]")
        ->check(Number())
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
        ->check(WholeNumberBetween(1, 65535))
        ->option_text("N");
    AddPart(command, input.reading);
    command
        .add_option("--max-cells", input.reading.maximumCells,
                    "A file of more cells is read at a lower resolution [16785409]")
        ->check(WholeNumberBetween(4, 1 << 30))
        ->option_text("N");
    command.add_option("--exaggeration", input.exaggeration, "Factor on heights; 1 shows true proportions [1]")
        ->check(NumberBetween(0.001, 1000.0))
        ->option_text("FACTOR");
}

void RefuseIdleOptions(const TerrainInput& input)
{
    const bool isProject = !input.file.empty() && IsProjectFile(input.file);
    const auto refuse = [&](const char* option, const std::string& why) {
        if (input.command->count(option) != 0)
            throw CLI::ValidationError(option, "has no effect: " + why);
    };
    if (!isProject)
        refuse("--terrain", NameOf(input) + " is no project");
    if (isProject || input.file.empty()) {
        for (const char* option : {"--fill", "--spacing", "--no-data", "--height-unit", "--grid", "--band", "--window",
                                   "--extent", "--resolution", "--max-cells"})
            refuse(option, NameOf(input) + " is no elevation file");
    }
}

}  // namespace tessara
