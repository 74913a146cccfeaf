#include "app/commands/commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/number_range.h"
#include "app/options/terrain_options.h"
#include "app/options/text_checks.h"
#include "app/options/view_options.h"
#include "app/output/frame_dump.h"
#include "app/output/ground_mesh.h"
#include "app/output/mesh_file.h"
#include "app/output/output_check.h"
#include "app/output/polygon_text.h"
#include "app/output/report.h"
#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>
#include <optional>

namespace tessara {

namespace {

struct DumpOptions {
    TerrainInput input;
    ViewOptions view;
    std::string output;
    bool solid = false;
    std::optional<double> width;  ///< of a solid from west to east, in millimetres
    std::optional<double> scale;  ///< of a solid, one to this
    double base = SolidSize().base;
};

constexpr double kSolidWidth = 100.0;

SolidSize SizeOf(const DumpOptions& options, const LoadedTerrain& loaded)
{
    const double metres = loaded.data.spacingX * (loaded.data.width - 1);
    const double perMetre = options.scale ? 1000.0 / *options.scale : options.width.value_or(kSolidWidth) / metres;
    return {perMetre, loaded.exaggeration, options.base};
}

/// \return how many triangles there are
std::uint64_t WriteFrame(const DumpOptions& options, const LoadedTerrain& loaded, TerrainSession& terrain,
                         const Camera& camera, const std::string& output)
{
    const MeshFormat format = MeshFormatOf(output);
    if (format == MeshFormat::Text) {
        const PolygonText polygons = DumpFrame(terrain, camera, options.view.frames, FrameExtent::Seen);
        WritePolygons(polygons, output);
        return polygons.Triangles();
    }
    TriangleMesh mesh =
        MakeGroundMesh(DumpFrame(terrain, camera, options.view.frames, FrameExtent::Whole), loaded.data);
    if (options.solid)
        mesh = MakeSolid(mesh, SizeOf(options, loaded));
    WriteMesh(mesh, output, format, options.solid ? kSolidUnits : kGroundUnits);
    return mesh.triangles.size();
}

void Dump(const DumpOptions& options)
{
    const std::string output = CheckedOutput(options.output, {options.input.file}, {".txt", ".obj", ".ply", ".stl"});
    if (options.solid && MeshFormatOf(output) == MeshFormat::Text)
        throw CLI::ValidationError("--solid", "needs a file that ends in .obj, .ply or .stl");
    const auto progress = MakeObject<ConsoleProgress>();
    ViewOptions view = options.view;
    const LoadedTerrain loaded = LoadTerrain(options.input, view.aim, *progress);
    const ElevationData& data = loaded.data;
    progress->Show("Building the terrain", 0.0);
    const auto host = MakeObject<KvoHost>(nullptr, ComPtr<IProgressWindow>(progress.Get()));
    TerrainSession terrain(data,
                           {.exaggeration = loaded.exaggeration,
                            .levelOfDetail = LevelOfDetailOf(view, loaded.look.errorPixels),
                            .elevations = loaded.SavedElevations()},
                           ComPtr<IKvoHost>(host.Get()));
    const auto camera = MakeCamera(view, data, loaded.span, terrain.Ground());

    progress->Show("Writing the triangles", 0.5);
    const std::uint64_t triangles = WriteFrame(options, loaded, terrain, *camera, output);
    progress->Clear();
    PrintWritten(std::to_string(triangles) + " triangles", output);
}

void AddSolidOptions(CLI::App& command, DumpOptions& options)
{
    CLI::Option* solid = command.add_flag("--solid", options.solid,
                                          "A closed body for a printer, with walls and a base, in\n"
                                          "millimetres; --exaggeration counts");
    CLI::Option* width =
        command.add_option("--width", options.width, "Its size from west to east in millimetres [100]");
    width->needs(solid)->check(NumberBetween(1.0, 1e5))->option_text("MM");
    command.add_option("--scale", options.scale, "Its scale instead: 25000 makes 1:25000")
        ->needs(solid)
        ->excludes(width)
        ->check(NumberBetween(0.001, 1e9))
        ->option_text("N");
    command.add_option("--base", options.base, "Its thickness under the lowest point in millimetres [3]")
        ->needs(solid)
        ->check(NumberBetween(0.01, 1e4))
        ->option_text("MM");
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
corner, z the height. They hold the whole terrain, in the detail that it has
for the camera. A .txt file is text as the terrain component gives it, of what
the camera sees: one vertex a line and three lines a triangle, columns from the
west, the height from 0 (lowest point) to 1 (highest point), rows from the
north.)");
    AddTerrainInput(command, options->input);
    command
        .add_option("-o,--output", options->output,
                    "The file to write; its ending says in which form. - writes text\n"
                    "to the standard output")
        ->check(NotEmpty())
        ->required()
        ->option_text("FILE.txt|obj|ply|stl");
    AddViewOptions(command, options->view);
    AddSolidOptions(command, *options);
    command.callback([options] { Dump(*options); });
}

}  // namespace tessara
