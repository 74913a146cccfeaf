#include "app/commands/project/project_commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/look_options.h"
#include "app/options/number_range.h"
#include "app/options/texture_options.h"
#include "app/options/view_options.h"
#include "app/view/palettes.h"
#include "host/console_progress.h"
#include "host/project/project_terrain.h"
#include "host/project/project_writer.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <iostream>
#include <memory>
#include <stdexcept>

namespace tessara {

namespace {

struct SetOptions {
    std::string project;
    std::string element;
    std::optional<double> exaggeration;
    ViewOptions view;
    LookOptions look;
    TextureOptions textures;
    std::string name;
    bool forgetView = false;
    bool remove = false;
};

void Change(ProjectPlace& place, const SetOptions& options)
{
    if (options.forgetView)
        ForgetView(place);
    if (options.look.sea)
        ForgetSea(place);
    ProjectView remembered;
    Remember(options.view.aim, remembered);
    Remember(options.look, remembered);
    Remember(options.textures, remembered);
    RememberView(place, remembered);
    SaveTextures(place, options.textures);
    if (options.exaggeration)
        WriteExaggeration(place, *options.exaggeration);
    if (options.view.aim.levelOfDetail)
        WriteLevelOfDetail(place, *options.view.aim.levelOfDetail);
    if (!options.look.palette.empty())
        WritePalette(place, *MakePalette(options.look.palette));
}

void Set(const SetOptions& options)
{
    const std::string chosen = OpenElement(options.project, options.element)->Name();
    ProjectWriter writer(options.project, options.project);
    if (options.remove) {
        if (writer.Elements().size() == 1)
            throw std::runtime_error("The project \"" + options.project + "\" has no other terrain.");
        writer.Remove(chosen);
    } else {
        const std::string name = options.name.empty() ? chosen : options.name;
        writer.Rename(chosen, name);
        const auto place = writer.Open(name);
        if (!place)
            throw std::runtime_error("The project \"" + options.project + "\" has no terrain \"" + name +
                                     "\" any more.");
        Change(*place, options);
        if (options.view.aim.camera)
            WarnOfBuriedCamera(options.view.aim, ReadTerrain(*place).data, *MakeObject<ConsoleProgress>());
    }
    writer.Commit();
    std::cout << options.project << '\n';
}

}  // namespace

void AddProjectSet(CLI::App& project)
{
    const auto options = std::make_shared<SetOptions>();
    CLI::App& command = *project.add_subcommand("set", "Change the settings of a terrain in a project");
    command.add_option("PROJECT", options->project, "The project")->required()->option_text(" ");
    command.add_option("--terrain", options->element, "Which terrain of the project [the first]")->option_text("NAME");
    command.add_option("--exaggeration", options->exaggeration, "Factor on heights; 1 shows true proportions")
        ->check(NumberBetween(0.001, 1000.0))
        ->option_text("FACTOR");
    command.add_option("--name", options->name, "A new name for the terrain")
        ->check(GoodTerrainName())
        ->option_text("NAME");
    command.add_flag("--forget-view", options->forgetView, "Leave camera, detail and sun to the program again");
    command.add_flag("--remove", options->remove, "Take the terrain out of the project");
    AddViewOptions(command, options->view);
    AddLookOptions(command, options->look);
    AddTextureOptions(command, options->textures);
    command.callback([options] { Set(*options); });
}

}  // namespace tessara
