#pragma once

#include "app/view/aim.h"
#include "app/view/framing.h"
#include "app/view/light_map.h"
#include "app/view/look.h"
#include "app/viewer/picture/background_light.h"
#include "app/viewer/terrain/terrain_document.h"
#include "app/viewer/work/view_settings.h"
#include "host/project/project_place.h"
#include "host/project/project_terrain.h"
#include "host/storage/file_version.h"

#include <memory>
#include <optional>
#include <string>

namespace tessara {

/// What a project says of a terrain beside its heights, which the terrain's own data and elevations no longer hold.
struct SavedTerrain {
    std::string project;  ///< path; empty for recovered work that was never saved
    ComPtr<ProjectPlace> place;
    ProjectTerrain terrain;
    Look look;
    Aim aim;
    ViewSettings settings{};               ///< with the look
    std::optional<FileVersion> version{};  ///< of the project, unless the work was recovered
    bool recovered = false;                ///< the project doesn't hold what was read
};

/// A terrain with everything that takes long to work out for it, and that needs no OpenGL.
struct OpenedTerrain {
    std::unique_ptr<TerrainDocument> document;
    Outline outline;
    LightMap light;
    LightConditions conditions;           ///< of the light
    std::optional<SavedTerrain> saved{};  ///< of a project
};

/// Size of the picture that a terrain will be shown in, in pixels.
struct PictureSize {
    int width = 1;
    int height = 1;
};

/// Works a terrain out, on any thread. \param path where the heights come from, empty for the built-in sample
/// \param settings,size that it will be shown with \throws std::runtime_error for the user
OpenedTerrain PrepareTerrain(std::string path, ElevationData data, const ViewSettings& settings,
                             const PictureSize& size = {}, const ProgressCallback& progress = {});

/// The same ground with at most so many points along an edge, for a first look. \param side at least 2
ElevationData Coarse(const ElevationData& data, int side);

}  // namespace tessara
