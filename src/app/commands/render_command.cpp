#include "app/commands/commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/look_options.h"
#include "app/options/terrain_options.h"
#include "app/options/text_checks.h"
#include "app/options/texture_options.h"
#include "app/options/view_options.h"
#include "app/output/output_check.h"
#include "app/output/png_file.h"
#include "app/output/report.h"
#include "app/view/height_colors.h"
#include "app/view/light_map.h"
#include "app/view/scene.h"
#include "host/console_progress.h"
#include "host/detail_camera.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "host/textures/texture_service.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <iostream>
#include <memory>
#include <stdexcept>
#include <utility>

namespace tessara {

namespace {

/// Edges of triangles whose errors are smaller than a pixel would fill the picture.
constexpr double kWirePixels = 6.0;

struct RenderOptions {
    TerrainInput input;
    ViewOptions view;
    TextureOptions textures;
    std::string output;
    LookOptions look;
    bool wireframe = false;
    bool antialias = true;
};

/// The look that a project has, with what was asked for in its place.
Look LookFor(const RenderOptions& options, const LoadedTerrain& loaded)
{
    Look look = loaded.look;
    look.exaggeration = loaded.exaggeration;
    if (options.look.sun)
        look.sun = options.look.sun;
    if (options.wireframe) {
        look.fill = FillMode::Wireframe;
        look.errorPixels = kWirePixels;
    }
    if (!options.look.palette.empty())
        look.colors = {options.look.palette, static_cast<double>(loaded.span.lowest),
                       static_cast<double>(loaded.span.highest)};
    look.sea = options.look.sea.value_or(look.sea);
    look.vertexColors = options.textures.color.value_or(look.vertexColors);
    look.mixColors = options.textures.mixColor.value_or(look.mixColors);
    return look;
}

/// The terrain as it is drawn, with room below it and a border around it.
TerrainSession MakeTerrain(const LoadedTerrain& loaded, const Look& look, double detail, const ComPtr<IKvoHost>& host)
{
    ElevationPalette palette;
    const HeightSpan& span = loaded.span;
    ColorPalette(palette, static_cast<double>(span.floor), static_cast<double>(span.top), look.colors);
    return TerrainSession(loaded.data,
                          {.exaggeration = look.exaggeration,
                           .levelOfDetail = detail,
                           .palette = &palette,
                           .border = kDrawnBorder,
                           .range = std::pair(span.floor, span.top)},
                          host);
}

void Render(RenderOptions options)
{
    const std::string output = CheckedOutput(options.output, {options.input.file, options.textures.source}, {".png"});
    const auto progress = MakeObject<ConsoleProgress>();
    LoadedTerrain loaded = LoadTerrain(options.input, options.view.aim, *progress);
    RefuseIdleOptions(options.textures, loaded.place.Get() != nullptr);
    Look look = LookFor(options, loaded);
    ScanHeights(loaded.data);
    const std::optional<Sea> sea = SeaOf(loaded.data, look.sea);
    if (sea)
        look.colors.sea = sea->level;

    OffscreenContext context;
    GlFunctions gl;
    if (!gl.Load(OffscreenContext::Lookup()))
        throw std::runtime_error("Pictures need OpenGL 3.0; this system has " + context.Describe() + ".");
    const RenderTarget target(gl, options.view.width, options.view.height, options.antialias);

    progress->Show("Building the terrain", 0.0);
    const auto host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()),
                                          ComPtr<IProgressWindow>(progress.Get()));
    TerrainSession terrain =
        MakeTerrain(loaded, look, LevelOfDetailOf(options.view, look.errorPixels), ComPtr<IKvoHost>(host.Get()));
    ApplyTextures(terrain.Surface(), loaded.place.Get(), options.textures, *progress);
    const auto camera = MakeCamera(options.view, loaded.data, loaded.span, terrain.Ground());
    const auto [azimuth, height] = look.sun.value_or(SunBeside(AzimuthOf(*camera)));
    const SceneStyle style{SunlitAtmosphere(azimuth, height), look.fill, look.fog, look.vertexColors, look.mixColors};
    progress->Show("Lighting", 0.3);
    const LightMap light =
        MakeLightMap(loaded.data, look.exaggeration, style.atmosphere.sunDirection, LightMap::kMostSide);
    progress->Show("Drawing", 0.6);
    Scene scene(gl, loaded.data, terrain, light, style);
    scene.Painter().SetColors(look.colors);
    scene.Painter().SetSea(sea ? &*sea : nullptr);
    target.Bind();
    const auto detail = MakeObject<DetailCamera>();
    terrain.Follow(*detail, *camera);
    const std::uint32_t triangles = scene.Settle(*camera, *detail, options.view.frames);
    scene.Draw(*camera, *detail);
    progress->Show("Writing", 0.9);
    WritePng(output, target.Width(), target.Height(), target.ReadPixels());
    progress->Clear();
    PrintWritten(std::to_string(target.Width()) + " x " + std::to_string(target.Height()) + " pixels, " +
                     std::to_string(triangles) + " triangles",
                 output);
}

}  // namespace

void AddRenderCommand(CLI::App& program)
{
    const auto options = std::make_shared<RenderOptions>();
    CLI::App& command =
        *program.add_subcommand("render", "Draw a picture of a terrain into a PNG file")->group("Commands");
    AddTerrainInput(command, options->input);
    command.add_option("-o,--output", options->output, "The picture to write; - writes it to the standard output")
        ->check(NotEmpty())
        ->required()
        ->option_text("PICTURE.png");
    AddViewOptions(command, options->view);
    AddLookOptions(command, options->look);
    AddTextureOptions(command, options->textures);
    command.add_flag("--wireframe", options->wireframe, "Draw the edges of the triangles only");
    command.add_flag_callback(
        "--no-antialias", [options] { options->antialias = false; }, "Leave edges jagged, which is quicker");
    command.callback([options] { Render(*options); });
}

}  // namespace tessara
