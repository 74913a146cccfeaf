#include "app/commands/project/project_commands.h"
#include "app/input/loaded_terrain.h"
#include "app/output/output_check.h"
#include "app/output/report.h"
#include "host/elevation/elevation_writer.h"
#include "host/project/project_terrain.h"
#include "platform/system/terminal_text.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>

namespace tessara {

namespace {

struct ExportOptions {
    std::string project;
    std::string element;
    std::string output;
};

void Export(const ExportOptions& options)
{
    const std::string output = CheckedOutput(options.output, {options.project}, {".tif", ".tiff", ".asc", ".png"});
    const auto place = OpenElement(options.project, options.element);
    const ProjectTerrain terrain = ReadTerrain(*place);
    WriteElevationFile(terrain.data, output);
    PrintWritten(place->Name() + ": " + std::to_string(terrain.data.width) + " x " +
                     std::to_string(terrain.data.height) + " heights",
                 output);
}

}  // namespace

void AddProjectExport(CLI::App& project)
{
    const auto options = std::make_shared<ExportOptions>();
    CLI::App& command = *project.add_subcommand("export", "Write the heights of a terrain as an elevation file");
    command.add_option("PROJECT", options->project, "The project")->required()->option_text(" ");
    command.add_option("--terrain", options->element, "Which terrain of the project [the first]")->option_text("NAME");
    command
        .add_option("-o,--output", options->output,
                    "The elevation file to write: .tif for a GeoTIFF, .asc for an\n"
                    "ESRI ASCII grid, .png for whole metres")
        ->required()
        ->option_text("FILE");
    command.callback([options] { Export(*options); });
}

}  // namespace tessara
