#include "app/commands/commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/terrain_options.h"
#include "app/options/view_options.h"
#include "app/output/frame_dump.h"
#include "app/output/mesh_file.h"
#include "app/output/output_check.h"
#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <iostream>
#include <memory>

namespace tessara {

namespace {

struct DumpOptions {
    TerrainInput input;
    ViewOptions view;
    std::string output;
};

void Dump(const DumpOptions& options)
{
    RequireWritable(options.output, options.input.file);
    const auto progress = MakeObject<ConsoleProgress>();
    ViewOptions view = options.view;
    const LoadedTerrain loaded = LoadTerrain(options.input, view.aim, *progress);
    const ElevationData& data = loaded.data;
    progress->Show("Building the terrain", 0.0);
    const auto host = MakeObject<KvoHost>(nullptr, ComPtr<IProgressWindow>(progress.Get()));
    const TerrainSession terrain(data,
                                 {.exaggeration = loaded.exaggeration,
                                  .levelOfDetail = LevelOfDetailOf(view, loaded.look.errorPixels),
                                  .elevations = loaded.SavedElevations()},
                                 ComPtr<IKvoHost>(host.Get()));
    const auto camera = MakeCamera(view, data, loaded.span, terrain.Ground());

    progress->Show("Writing the triangles", 0.5);
    const PolygonText polygons = DumpFrame(terrain, *camera, view.frames);
    WriteMesh(polygons, options.output, terrain.Ground());
    progress->Clear();
    std::cout << polygons.Triangles() << " triangles\n" << options.output << '\n';
}

}  // namespace

void AddDumpCommand(CLI::App& program)
{
    const auto options = std::make_shared<DumpOptions>();
    CLI::App& command =
        *program.add_subcommand("dump", "Write the triangles that the terrain has for a camera into a file")
             ->group("Commands");
    command.footer(R"(
Files .obj, .ply and .stl hold metres: x east and y north of the south-west
corner, z the height. Every other file is text, one vertex a line and three
lines a triangle: columns from the west, the height from 0 (lowest point) to
1 (highest point), rows from the north.)");
    AddTerrainInput(command, options->input);
    command.add_option("-o,--output", options->output, "The file to write; its ending says in which form")
        ->required()
        ->option_text("FILE.txt|obj|ply|stl");
    AddViewOptions(command, options->view);
    command.callback([options] { Dump(*options); });
}

}  // namespace tessara
