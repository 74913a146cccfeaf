#include "app/input/loaded_terrain.h"

#include "app/options/terrain_options.h"
#include "app/options/view_options.h"
#include "app/view/palettes.h"
#include "host/console_progress.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"
#include "samples/country/sample_terrain.h"

#include <stdexcept>
#include <utility>

namespace tessara {

namespace {

ElevationData ReadElevations(const TerrainInput& input, ConsoleProgress& progress)
{
    const auto show = [&](const char* title) {
        return [&progress, title](double fraction) { progress.Show(title, fraction); };
    };
    ElevationData data = input.file.empty()
                             ? MakeSampleTerrain(kSampleTerrainSize, kSampleTerrainSeed, show("Making the sample"))
                             : ReadElevationFile(input.file, input.reading, show("Reading"));
    progress.Clear();
    if (!input.file.empty()) {
        for (const std::string& note : data.notes)
            progress.Say(input.file + ": " + note);
    }
    return data;
}

LoadedTerrain ReadProject(const TerrainInput& input)
{
    LoadedTerrain loaded;
    loaded.place = OpenElement(input.file, input.element);
    ProjectTerrain terrain = ReadTerrain(*loaded.place);
    loaded.span = MeasureSpan(terrain.data);
    loaded.look = LookIn(terrain, loaded.place->Settings(), loaded.span);
    loaded.data = std::move(terrain.data);
    loaded.exaggeration = terrain.exaggeration;
    loaded.elevations = std::move(terrain.elevations);
    loaded.palette = std::make_unique<ElevationPalette>(terrain.palette);
    loaded.view = std::move(terrain.view);
    return loaded;
}

/// Gives an aim what it leaves open from what a project remembers. One that asks for any place or direction of the
/// camera gets none of the project's places.
void FillIn(Aim& aim, const Aim& remembered)
{
    const auto fill = [](auto& option, const auto& value) {
        if (!option)
            option = value;
    };
    const bool aimed = aim.camera || aim.target || aim.azimuth || aim.tilt;
    if (!aimed) {
        aim.camera = remembered.camera;
        aim.target = remembered.target;
    }
    if (!aimed || !aim.camera) {
        fill(aim.azimuth, remembered.azimuth);
        fill(aim.tilt, remembered.tilt);
    }
    fill(aim.fieldOfView, remembered.fieldOfView);
    fill(aim.levelOfDetail, remembered.levelOfDetail);
}

}  // namespace

ComPtr<ProjectPlace> OpenElement(const std::string& project, const std::string& element)
{
    const ProjectFile file(project);
    if (file.Elements().empty())
        throw std::runtime_error("The project \"" + project + "\" has no terrain.");
    ComPtr<ProjectPlace> place = file.Open(element.empty() ? file.Elements().front() : element);
    if (!place)
        throw std::runtime_error("The project \"" + project + "\" has no terrain of the name \"" + element + "\".");
    return place;
}

LoadedTerrain LoadTerrain(const TerrainInput& input, Aim& aim, ConsoleProgress& progress)
{
    RefuseIdleOptions(input);
    RefuseIdleOptions(aim);
    LoadedTerrain loaded;
    if (!input.file.empty() && IsProjectFile(input.file)) {
        loaded = ReadProject(input);
    } else {
        loaded.data = ReadElevations(input, progress);
        loaded.span = MeasureSpan(loaded.data);
        loaded.look.colors = {PaletteNames().front(), static_cast<double>(loaded.span.lowest),
                              static_cast<double>(loaded.span.highest)};
    }
    loaded.exaggeration = input.exaggeration.value_or(loaded.exaggeration);
    FillIn(aim, AimOf(loaded.view));
    return loaded;
}

std::unique_ptr<ElevationPalette> LoadedTerrain::Colours(const std::string& asked, const std::string& otherwise) const
{
    if (asked.empty() && palette)
        return std::make_unique<ElevationPalette>(*palette);
    return MakePalette(asked.empty() ? otherwise : asked);
}

std::string NameOf(const TerrainInput& input)
{
    return input.file.empty() ? "the built-in sample" : input.file;
}

}  // namespace tessara
