#pragma once

#include "app/view/height_colors.h"
#include "app/view/sea.h"
#include "host/project/project_setting.h"

#include <optional>
#include <utility>

namespace tessara {

class ProjectPlace;
struct HeightSpan;
struct ProjectTerrain;

enum class FillMode { Filled, Wireframe, Points };

/// How a terrain is shown, but for the camera.
struct Look {
    double exaggeration = 1.0;
    HeightColors colors;

    /// Compass direction and height in degrees; without it beside the camera.
    std::optional<std::pair<double, double>> sun{};

    double fog = 0.3;          ///< 0 for none to 1
    double errorPixels = 0.7;  ///< height errors smaller than this many pixels are left, unless an aim says otherwise
    FillMode fill = FillMode::Filled;
    bool vertexColors = true;   ///< heights have colours
    bool mixColors = false;     ///< the picture of the ground is multiplied by them, in place of hiding them
    bool sourceTexture = true;  ///< the picture of the ground is shown where there is one

    SeaChoice sea{};

    bool operator==(const Look&) const = default;
};

/// What a project says of a look; what it doesn't say is as every program shows it.
/// \param stored settings of the terrain's place \param span of the terrain's heights
Look LookIn(const ProjectTerrain& terrain, const ProjectSettings& stored, const HeightSpan& span);

/// Remembers a look. \param before what the project holds already and need not be told again; null for nothing
/// \throws StorageError
void RememberLook(ProjectPlace& place, const Look& look, const Look* before);

/// Gives the palette of a project's terrain the colours of heights. \throws StorageError
void WriteColors(ProjectPlace& place, const HeightColors& colors);

}  // namespace tessara
