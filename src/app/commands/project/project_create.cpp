#include "app/commands/project/project_commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/look_options.h"
#include "app/options/terrain_options.h"
#include "app/options/texture_options.h"
#include "app/options/view_options.h"
#include "app/output/output_check.h"
#include "app/view/palettes.h"
#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "host/project/element_name.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"
#include "host/project/project_writer.h"
#include "host/terrain_session.h"
#include "platform/system/replacement_file.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>

namespace tessara {

namespace {

struct CreateOptions {
    TerrainInput input;
    ViewOptions view;
    LookOptions look;
    TextureOptions textures;
    std::string project;
    std::string name;
    bool add = false;
    bool replace = false;
};

std::string TerrainName(const CreateOptions& options)
{
    return options.name.empty() ? NameFromFile(options.input.file) : options.name;
}

/// What the new version begins with.
std::string Beginning(const CreateOptions& options)
{
    std::error_code error;
    return options.add && std::filesystem::exists(options.project, error) ? options.project : std::string();
}

void CheckOptions(const CreateOptions& options)
{
    RefuseIdleOptions(options.textures, false);
    RequireReplaceable(CheckedOutput(options.project, {options.input.file, options.textures.source}, {}),
                       ReplacementFile::Kind::File);
    if (IsProjectFile(options.input.file))
        throw std::runtime_error("The file " + options.input.file +
                                 " is a project already; \"tessara project set\" changes it.");
    std::error_code error;
    if (!options.add && !options.replace && std::filesystem::exists(options.project, error))
        throw std::runtime_error("There is a file " + options.project +
                                 " already; --add adds the terrain to it, --replace puts a new project in its place.");
    if (!Beginning(options).empty() && ProjectFile(options.project).Open(TerrainName(options)))
        throw std::runtime_error("The project " + options.project + " has a terrain \"" + TerrainName(options) +
                                 "\" already; --name gives the new one another name.");
}

void Create(CreateOptions options)
{
    CheckOptions(options);
    const auto progress = MakeObject<ConsoleProgress>();
    ProjectView remembered;
    Remember(options.view.aim, remembered);
    Remember(options.look, remembered);
    Remember(options.textures, remembered);
    if (remembered.palette.empty())
        remembered.palette = PaletteNames().front();
    const LoadedTerrain loaded = LoadTerrain(options.input, options.view.aim, *progress);
    const auto palette = MakePalette(remembered.palette);
    const auto host = MakeObject<KvoHost>(nullptr, ComPtr<IProgressWindow>(progress.Get()));
    const TerrainSession terrain(loaded.data,
                                 {.exaggeration = loaded.exaggeration,
                                  .levelOfDetail = LevelOfDetailOf(options.view),
                                  .palette = palette.get(),
                                  .buildTree = false},
                                 ComPtr<IKvoHost>(host.Get()));
    progress->Show("Saving", 0.5);
    const std::string name = TerrainName(options);
    ProjectWriter writer(options.project, Beginning(options));
    const auto place = writer.AddElement(name);
    WriteTerrain(*place, terrain, loaded.data, loaded.exaggeration, remembered);
    SaveTextures(*place, options.textures);
    writer.Commit();
    progress->Clear();
    std::cout << name << ": " << loaded.data.width << " x " << loaded.data.height << " heights\n"
              << options.project << '\n';
}

}  // namespace

void AddProjectCreate(CLI::App& project)
{
    const auto options = std::make_shared<CreateOptions>();
    CLI::App& command = *project.add_subcommand("create", "Make a project of an elevation file");
    AddTerrainInput(command, options->input);
    command.add_option("-o,--output", options->project, "The project to write")
        ->required()
        ->option_text("PROJECT.tessara");
    command.add_option("--name", options->name, "Name of the terrain in the project [that of the file]")
        ->check(GoodTerrainName())
        ->option_text("NAME");
    CLI::Option* add = command.add_flag("--add", options->add, "Add the terrain to a project that is there");
    command.add_flag("--replace", options->replace, "Put the new project in the place of one that is there")
        ->excludes(add);
    AddViewOptions(command, options->view);
    AddLookOptions(command, options->look);
    AddTextureOptions(command, options->textures);
    command.callback([options] { Create(*options); });
}

}  // namespace tessara
