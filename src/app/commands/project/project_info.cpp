#include "app/commands/project/project_commands.h"
#include "app/output/report.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>

namespace tessara {

namespace {

struct ProjectInfoOptions {
    std::string project;
    bool values = false;
};

std::int32_t Integer(const ProjectPlace& place, const char* name)
{
    std::int32_t number = 0;
    const auto bytes = place.Read(name);
    if (bytes && bytes->size() == sizeof number)
        std::memcpy(&number, bytes->data(), sizeof number);
    return number;
}

std::string Text(const ProjectPlace& place, const char* name)
{
    const auto bytes = place.Read(name);
    if (!bytes || bytes->empty() || bytes->back() != 0)
        return {};
    return reinterpret_cast<const char*>(bytes->data());
}

std::string PointText(const Vector3& point)
{
    return NumberText(point.x, 1) + " m east, " + NumberText(point.y, 1) + " m north, " + NumberText(point.z, 1) +
           " m high";
}

void PrintTextures(const ProjectPlace& place)
{
    const std::int32_t width = Integer(place, "TEXTURE_SRC_WIDTH");
    const std::int32_t height = Integer(place, "TEXTURE_SRC_HEIGHT");
    if (width != 0 && height != 0)
        Line("Source image", std::to_string(width) + " x " + std::to_string(height) + " pixels, " +
                                 (Integer(place, "IS_USING_SOURCE") != 0 ? "shown" : "not shown"));
    const std::string detail = Text(place, "TEXTURE_DET_NAME");
    const std::string name = Text(place, "TEXTURE_DET_NAME_USER");
    if (!detail.empty())
        Line("Detail texture", (name.empty() ? detail : name) + " of the " +
                                   (Text(place, "DATABASE") == "USERDB" ? "user" : "system") + " database, " +
                                   (Integer(place, "IS_USING_DETAIL") != 0 ? "shown" : "not shown"));
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
    if (view.sun)
        Line("Sun", NumberText(view.sun->first, 2) + " degrees, " + NumberText(view.sun->second, 2) + " high");
}

std::string SettingText(const ProjectSetting& setting)
{
    const double* number = std::get_if<double>(&setting);
    return number ? NumberText(*number, 9) : std::get<std::string>(setting);
}

void PrintElement(const ProjectPlace& place, bool withValues)
{
    const ProjectTerrain terrain = ReadTerrainFrame(place);
    std::cout << '\n';
    Line("Terrain", place.Name());
    PrintGrid(terrain.data);
    PrintReference(terrain.data);
    PrintView(terrain);
    PrintTextures(place);
    for (const ProjectPlace::Value& value : place.Values()) {
        if (withValues)
            Line(value.name.c_str(), " " + std::to_string(value.size) + " bytes, type " +
                                         std::to_string(value.typeCode) + (value.deliverable ? "" : ", not loaded"));
        else if (!value.deliverable)
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
