#include "app/commands/commands.h"
#include "app/options/terrain_input.h"
#include "app/options/view_options.h"
#include "app/output/frame_dump.h"
#include "app/output/temporary_file.h"
#include "app/scene/framing.h"
#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "host/tree_size.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <charconv>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>

namespace tessara {

namespace {

struct InfoOptions {
    TerrainInput input;
    ViewOptions view;
};

/// A number with a decimal point and without needless zeros.
std::string Number(double value, int decimals)
{
    const double unit = std::pow(10.0, decimals);
    char digits[400];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, std::round(value * unit) / unit + 0.0, std::chars_format::fixed);
    return std::string(digits, end.ptr);
}

std::string Mebibytes(double bytes)
{
    return Number(bytes / (1024.0 * 1024.0), 1) + " MiB";
}

void Line(const char* name, const std::string& text)
{
    std::cout << std::left << std::setw(20) << name << text << '\n';
}

void PrintFile(const TerrainInput& input, const ElevationData& data)
{
    Line("Terrain", NameOf(input));
    if (!data.format.empty())
        Line("Format", data.format);
    Line("Heights", std::to_string(data.width) + " columns x " + std::to_string(data.height) + " rows");
    if (data.sourceWidth != data.width || data.sourceHeight != data.height)
        Line("In the file", std::to_string(data.sourceWidth) + " columns x " + std::to_string(data.sourceHeight) +
                                " rows, read at a lower resolution");
    Line("Spacing", Number(data.spacingX, 3) + " m east, " + Number(data.spacingY, 3) + " m south");
    Line("Extent", Number(data.spacingX * (data.width - 1) / 1000.0, 3) + " km x " +
                       Number(data.spacingY * (data.height - 1) / 1000.0, 3) + " km");
    Line("Lowest, highest",
         Number(static_cast<double>(data.minimum), 2) + " m, " + Number(static_cast<double>(data.maximum), 2) + " m");
    Line("Cells without data", std::to_string(data.missing));
    Line("Reference system", data.referenceSystem.empty() ? "none" : data.referenceSystem);
    if (data.georeferenced)
        Line("North-west point", Number(data.originX, 7) + ", " + Number(data.originY, 7));
}

void Info(const InfoOptions& options)
{
    const auto progress = MakeObject<ConsoleProgress>();
    const ElevationData data = LoadTerrain(options.input, *progress);
    PrintFile(options.input, data);

    progress->Show("Building the terrain", 0.0);
    const auto host = MakeObject<KvoHost>(nullptr, ComPtr<IProgressWindow>(progress.Get()));
    const TerrainSession terrain(data, {options.input.exaggeration, LevelOfDetailOf(options.view)},
                                 ComPtr<IKvoHost>(host.Get()));
    const auto camera = MakeCamera(options.view, terrain.Ground(), OutlineOf(data, terrain.Ground()));
    progress->Show("Counting the triangles", 0.5);
    const TemporaryFile dump((std::filesystem::temp_directory_path() / "tessara-info").string());
    const std::uint64_t triangles = DumpFrame(terrain, *camera, options.view.frames, dump.Path());
    progress->Clear();

    const TreeSize tree = MeasureTree(terrain.Columns(), terrain.Rows());
    Line("Quadtree",
         std::to_string(tree.levels) + " levels, about " + std::to_string(tree.nodes) + " nodes at full detail");
    Line("Memory", Mebibytes(16.0 * data.width * data.height) + " for the grid, " +
                       Mebibytes(static_cast<double>(terrain.TreeMemory())) +
                       " for the tree (by which the process grew)");
    const std::uint64_t full = 2ull * static_cast<unsigned>(data.width - 1) * static_cast<unsigned>(data.height - 1);
    Line("Triangles", std::to_string(triangles) + " from the camera; the whole grid has " + std::to_string(full));
}

}  // namespace

void AddInfoCommand(CLI::App& program)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App& command = *program.add_subcommand("info", "Tell what an elevation file holds and what its terrain takes")
                             ->group("Commands");
    AddTerrainInput(command, options->input);
    AddViewOptions(command, options->view);
    command.callback([options] { Info(*options); });
}

}  // namespace tessara
