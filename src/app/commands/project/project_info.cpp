#include "app/commands/project/project_commands.h"
#include "app/output/report.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"
#include "persistence/saved_textures.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <filesystem>
#include <iostream>
#include <memory>

namespace tessara {

namespace {

struct ProjectInfoOptions {
    std::string project;
    bool values = false;
};

std::string PointText(const Vector3& point)
{
    return NumberText(point.x, 1) + " m east, " + NumberText(point.y, 1) + " m north, " + NumberText(point.z, 1) +
           " m high";
}

const char* Shown(const std::optional<LONG>& on)
{
    return on.value_or(1) != 0 ? "shown" : "not shown";
}

void PrintTextures(ProjectPlace& place)
{
    SavedTexturesReader reader(place);
    SavedImage image;
    const bool hasSource = reader.FindSource(image);
    const SavedDetail detail = reader.ReadDetail();
    const SavedTextureSettings settings = reader.ReadSettings();
    if (hasSource)
        Line("Source image", std::to_string(image.width) + " x " + std::to_string(image.height) + " pixels, " +
                                 Shown(settings.usingSource));
    const std::string key = detail.key.value_or("");
    const std::string name = detail.displayName.value_or("");
    if (!key.empty())
        Line("Detail texture", (name.empty() ? key : name) + " of the " +
                                   (detail.database == "USERDB" ? "user" : "system") + " database, " +
                                   Shown(settings.usingDetail));
}

void PrintView(const ProjectTerrain& terrain)
{
    const ProjectView& view = terrain.view;
    Line("Exaggeration", NumberText(terrain.exaggeration, 3));
    Line("Level of detail", view.levelOfDetail ? NumberText(*view.levelOfDetail, 1) + " m" : "by the picture");
    Line("Palette", view.palette.empty() ? "colours of its own" : view.palette);
    if (view.camera)
        Line("Camera", PointText(*view.camera));
    if (view.target)
        Line("Looks at", PointText(*view.target));
    if (view.azimuth)
        Line("Azimuth", NumberText(*view.azimuth, 2) + " degrees");
    if (view.tilt)
        Line("Tilt", NumberText(*view.tilt, 2) + " degrees");
    if (view.fieldOfView)
        Line("Field of view", NumberText(*view.fieldOfView, 2) + " degrees");
    if (view.sea || view.seaLevel)
        Line("Sea", view.sea == false ? "not shown"
                                      : NumberText(view.seaLevel.value_or(0.0), 2) + " m" +
                                            (view.sea ? "" : ", where the heights have one"));
    if (view.sun)
        Line("Sun", NumberText(view.sun->first, 2) + " degrees, " + NumberText(view.sun->second, 2) + " high");
}

std::string SettingText(const ProjectSetting& setting)
{
    const double* number = std::get_if<double>(&setting);
    return number ? NumberText(*number, 9) : std::get<std::string>(setting);
}

void PrintElement(ProjectPlace& place, bool withValues)
{
    const ProjectTerrain terrain = ReadTerrainFrame(place);
    std::cout << '\n';
    Line("Terrain", place.Name());
    PrintGrid(terrain.data);
    PrintReference(terrain.data);
    PrintView(terrain);
    PrintTextures(place);
    for (const ProjectPlace::Value& value : place.Values()) {
        const bool isDamaged = !value.deliverable && FindSavedValue(value.name);
        if (withValues)
            Line(value.name.c_str(), " " + std::to_string(value.size) + " bytes, type " +
                                         std::to_string(value.typeCode) + (isDamaged ? ", not loaded" : ""));
        else if (isDamaged)
            Line("Not loaded", value.name + ", which has " + std::to_string(value.size) + " bytes");
    }
    if (withValues) {
        for (const auto& [name, setting] : place.Settings())
            Line(name.c_str(), " " + SettingText(setting));
    }
}

void PrintProject(const ProjectInfoOptions& options)
{
    const ProjectFile project(options.project);
    Line("Project", options.project);
    Line("Size", MebibytesText(static_cast<double>(std::filesystem::file_size(options.project))));
    Line("Terrains", std::to_string(project.Elements().size()));
    for (const std::string& element : project.Elements())
        PrintElement(*project.Open(element), options.values);
}

}  // namespace

void AddProjectInfo(CLI::App& project)
{
    const auto options = std::make_shared<ProjectInfoOptions>();
    CLI::App& command = *project.add_subcommand("info", "Tell what a project holds");
    command.add_option("PROJECT", options->project, "The project")->required()->option_text(" ");
    command.add_flag("--values", options->values, "Tell every value and setting by its name in the file");
    command.callback([options] { PrintProject(*options); });
}

}  // namespace tessara
