#include "app/input/loaded_terrain.h"

#include "app/options/terrain_options.h"
#include "app/options/view_options.h"
#include "app/view/palettes.h"
#include "host/console_progress.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"
#include "platform/system/number_text.h"
#include "samples/country/sample_terrain.h"

#include <algorithm>
#include <cmath>
#include <optional>
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

/// Height in metres of the ground at a map point; nothing beside the terrain.
std::optional<double> GroundAt(const Vector3& point, const ElevationData& data)
{
    const double column = point.x / data.spacingX;
    const double row = data.height - 1 - point.y / data.spacingY;
    if (!(column >= 0.0 && column <= data.width - 1.0 && row >= 0.0 && row <= data.height - 1.0))
        return std::nullopt;
    const int x = static_cast<int>(column);
    const int y = static_cast<int>(row);
    const auto metres = [&](int dx, int dy) {
        const auto left = static_cast<std::size_t>(std::min(x + dx, data.width - 1));
        const auto above = static_cast<std::size_t>(std::min(y + dy, data.height - 1));
        return static_cast<double>(data.metres[left + above * static_cast<std::size_t>(data.width)]);
    };
    return std::lerp(std::lerp(metres(0, 0), metres(1, 0), column - x),
                     std::lerp(metres(0, 1), metres(1, 1), column - x), row - y);
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
    WarnOfBuriedCamera(aim, loaded.data, progress);
    return loaded;
}

void WarnOfBuriedCamera(const Aim& aim, const ElevationData& data, ConsoleProgress& progress)
{
    const auto ground = aim.camera ? GroundAt(*aim.camera, data) : std::nullopt;
    if (!ground || aim.camera->z >= *ground)
        return;
    progress.Say("The camera stands below the ground, whose height there is " + FixedText(*ground, 1) +
                 " m, and sees the terrain from below.");
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
