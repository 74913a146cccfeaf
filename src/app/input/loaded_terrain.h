#pragma once

#include "app/view/aim.h"
#include "app/view/height_span.h"
#include "app/view/look.h"
#include "host/elevation/elevation_file.h"
#include "host/project/project_place.h"
#include "host/project/project_view.h"
#include "textures/elevation_palette.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tessara {

class ConsoleProgress;

/// Which terrain a command works on.
struct TerrainInput {
    std::string file;     ///< an elevation file or a project; empty for the built-in sample
    std::string element;  ///< which terrain of a project; empty for the first one
    ElevationReadOptions reading;
    std::optional<double> exaggeration;
    const CLI::App* command = nullptr;  ///< which the options belong to
};

/// A terrain that was read, from an elevation file or from a project.
struct LoadedTerrain {
    ElevationData data;
    HeightSpan span;
    double exaggeration = 1.0;
    Look look;  ///< as a project says, or as every program shows a terrain

    // Of a project only.
    ComPtr<ProjectPlace> place;
    std::vector<float> elevations;  ///< as they were saved
    std::unique_ptr<ElevationPalette> palette;
    ProjectView view;

    /// Those of a palette's name, else those of a project, else those of `otherwise`, a name as well.
    std::unique_ptr<ElevationPalette> Colours(const std::string& asked, const std::string& otherwise) const;

    /// What TerrainOptions::elevations takes.
    const std::vector<float>* SavedElevations() const { return place ? &elevations : nullptr; }
};

/// Reads the file, or makes the sample, and tells the user what had to be done to it.
/// \param aim gets from a project what it leaves open \throws std::runtime_error with one sentence that names the file
LoadedTerrain LoadTerrain(const TerrainInput& input, Aim& aim, ConsoleProgress& progress);

/// Tells of a camera from which the ground is seen from below: mostly a height that was mistaken.
void WarnOfBuriedCamera(const Aim& aim, const ElevationData& data, ConsoleProgress& progress);

/// The terrain of that name in a project, or the first one. \throws std::runtime_error where there is none
ComPtr<ProjectPlace> OpenElement(const std::string& project, const std::string& element);

/// How messages call the terrain.
std::string NameOf(const TerrainInput& input);

}  // namespace tessara
