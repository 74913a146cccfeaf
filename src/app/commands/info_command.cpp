#include "app/commands/commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/terrain_options.h"
#include "app/options/view_options.h"
#include "app/output/frame_dump.h"
#include "app/output/ground_mesh.h"
#include "app/output/report.h"
#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "host/tree_size.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>

namespace tessara {

namespace {

struct InfoOptions {
    TerrainInput input;
    ViewOptions view;
};

void PrintFile(const TerrainInput& input, const ElevationData& data)
{
    Line("Terrain", NameOf(input));
    if (!data.format.empty())
        Line("Format", data.format);
    PrintGrid(data);
    Line("Cells without data", std::to_string(data.missing));
    PrintReference(data);
}

void Info(const InfoOptions& options)
{
    const auto progress = MakeObject<ConsoleProgress>();
    ViewOptions view = options.view;
    TerrainInput input = options.input;
    input.reading.exactRange = true;
    const LoadedTerrain loaded = LoadTerrain(input, view.aim, *progress);
    const ElevationData& data = loaded.data;
    PrintFile(options.input, data);

    progress->Show("Building the terrain", 0.0);
    const auto host = MakeObject<KvoHost>(nullptr, ComPtr<IProgressWindow>(progress.Get()));
    TerrainSession terrain(data,
                           {.exaggeration = loaded.exaggeration,
                            .levelOfDetail = LevelOfDetailOf(view, loaded.look.errorPixels),
                            .elevations = loaded.SavedElevations()},
                           ComPtr<IKvoHost>(host.Get()));
    const auto camera = MakeCamera(view, data, loaded.span, terrain.Ground());
    progress->Show("Counting the triangles", 0.5);
    const std::uint64_t triangles =
        MakeGroundMesh(DumpFrame(terrain, *camera, view.frames, FrameExtent::Whole), data).triangles.size();
    progress->Clear();

    const TreeSize tree = MeasureTree(terrain.Columns(), terrain.Rows());
    Line("Quadtree",
         std::to_string(tree.levels) + " levels, about " + std::to_string(tree.nodes) + " nodes at full detail");
    Line("Memory", MebibytesText(16.0 * data.width * data.height) + " for the grid, " +
                       MebibytesText(static_cast<double>(terrain.TreeMemory())) +
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
