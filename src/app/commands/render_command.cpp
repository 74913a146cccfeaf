#include "app/commands/commands.h"
#include "app/options/look_options.h"
#include "app/options/terrain_input.h"
#include "app/options/texture_options.h"
#include "app/options/view_options.h"
#include "app/output/output_check.h"
#include "app/output/png_file.h"
#include "app/view/light_map.h"
#include "app/view/palettes.h"
#include "app/view/scene.h"
#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "host/textures/texture_service.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cmath>
#include <iostream>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <utility>

namespace tessara {

namespace {

/// Cells around the grid: enough for what the surface draws at the corner to lie outside.
constexpr int kBorder = 2;

/// Edges of triangles whose errors are smaller than a pixel would fill the picture.
constexpr double kWirePixels = 6.0;

constexpr int kLightMapSide = 2048;
constexpr int kMostFrames = 200;

struct RenderOptions {
    TerrainInput input;
    ViewOptions view;
    TextureOptions textures;
    std::string output;
    LookOptions look;
    bool wireframe = false;
    bool antialias = true;
};

Atmosphere AtmosphereOf(const RenderOptions& options, const Camera& camera)
{
    if (options.look.sun)
        return SunlitAtmosphere(options.look.sun->first, options.look.sun->second);
    const Vector3 left = camera.Right() * -1.0;
    const double azimuth = std::atan2(left.x, -left.z) * 180.0 / std::numbers::pi;
    return SunlitAtmosphere(azimuth + 10.0, 38.0);
}

/// Adapts the terrain to the camera. \return the triangles of the frame
std::uint32_t Settle(const Scene& scene, Camera& camera, int frames)
{
    std::uint32_t triangles = scene.Adapt(camera);
    for (int frame = 1; frame < (frames > 0 ? frames : kMostFrames); ++frame) {
        const std::uint32_t before = std::exchange(triangles, scene.Adapt(camera));
        if (frames == 0 && before == triangles)
            break;
    }
    return triangles;
}

void Render(RenderOptions options)
{
    RequireWritable(options.output, options.input.file);
    const auto progress = MakeObject<ConsoleProgress>();
    const LoadedTerrain loaded = LoadTerrain(options.input, options.view, *progress);
    const ElevationData& data = loaded.data;
    if (!options.look.sun)
        options.look.sun = loaded.view.sun;
    if (!options.textures.color)
        options.textures.color = loaded.view.color;

    OffscreenContext context;
    GlFunctions gl;
    if (!gl.Load(OffscreenContext::Lookup()))
        throw std::runtime_error("Pictures need OpenGL 3.0; this system has " + context.Describe() + ".");
    const RenderTarget target(gl, options.view.width, options.view.height, options.antialias);

    progress->Show("Building the terrain", 0.0);
    const auto host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()),
                                          ComPtr<IProgressWindow>(progress.Get()));
    const auto palette = loaded.Colours(options.look.palette, PaletteNames().front());
    const double detail =
        options.wireframe ? LevelOfDetailOf(options.view, kWirePixels) : LevelOfDetailOf(options.view);
    const TerrainSession terrain(data, {loaded.exaggeration, detail, palette.get(), kBorder, loaded.SavedElevations()},
                                 ComPtr<IKvoHost>(host.Get()));
    ApplyTextures(terrain.Surface(), loaded.place.Get(), options.textures, *progress);
    const auto outline = OutlineOf(data, terrain.Ground());
    const auto camera = MakeCamera(options.view, terrain.Ground(), outline);
    const Atmosphere atmosphere = AtmosphereOf(options, *camera);
    progress->Show("Lighting", 0.3);
    const LightMap light = MakeLightMap(data, loaded.exaggeration, atmosphere.sunDirection, kLightMapSide);
    progress->Show("Drawing", 0.6);
    const Scene scene(gl, data, terrain, light, outline, {atmosphere, options.wireframe});
    target.Bind();
    const std::uint32_t triangles = Settle(scene, *camera, options.view.frames);
    scene.Draw(*camera);
    progress->Show("Writing", 0.9);
    WritePng(options.output, target.Width(), target.Height(), target.ReadPixels());
    progress->Clear();
    std::cout << target.Width() << " x " << target.Height() << " pixels, " << triangles << " triangles\n"
              << options.output << '\n';
}

}  // namespace

void AddRenderCommand(CLI::App& program)
{
    const auto options = std::make_shared<RenderOptions>();
    CLI::App& command =
        *program.add_subcommand("render", "Draw a picture of a terrain into a PNG file")->group("Commands");
    AddTerrainInput(command, options->input);
    command.add_option("-o,--output", options->output, "The picture to write")->required()->option_text("PICTURE.png");
    AddViewOptions(command, options->view);
    AddLookOptions(command, options->look);
    AddTextureOptions(command, options->textures);
    command.add_flag("--wireframe", options->wireframe, "Draw the edges of the triangles only");
    command.add_flag_callback(
        "--no-antialias", [options] { options->antialias = false; }, "Leave edges jagged, which is quicker");
    command.callback([options] { Render(*options); });
}

}  // namespace tessara
