#include "app/commands/commands.h"
#include "app/commands/project/project_commands.h"
#include "host/project/element_name.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace tessara {

void AddProjectCommand(CLI::App& program)
{
    CLI::App& project =
        *program.add_subcommand("project", "Make, look at and change projects: terrains with all their settings")
             ->group("Commands");
    project.require_subcommand(1);
    project.footer(R"(
A project is one file that holds terrains: heights, colours, textures, the
camera and every setting. render, dump and info read it in place of an
elevation file.)");
    AddProjectCreate(project);
    AddProjectInfo(project);
    AddProjectSet(project);
    AddProjectExport(project);
}

CLI::Validator GoodTerrainName()
{
    const auto check = [](const std::string& name) {
        const std::string problem = NameProblem(name);
        return problem.empty() ? std::string() : "the name of a terrain " + problem;
    };
    return {check, ""};
}

}  // namespace tessara
