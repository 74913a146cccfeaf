#pragma once

#include "../vector3.h"
#include "project_setting.h"

#include <optional>
#include <string>
#include <utility>

namespace tessara {

class ProjectPlace;

/// How a program shows a terrain: what a project remembers of it beside what the surface saves. Points are map points:
/// metres east and north of the south-west grid point, and the height in metres. What isn't set is the program's
/// choice.
struct ProjectView {
    std::optional<Vector3> camera;
    std::optional<Vector3> target;                 ///< the point in the middle of the picture
    std::optional<double> azimuth;                 ///< compass direction of the view in degrees
    std::optional<double> tilt;                    ///< degrees below the horizon
    std::optional<double> fieldOfView;             ///< degrees across the picture
    std::optional<double> levelOfDetail;           ///< where somebody chose it
    std::optional<std::pair<double, double>> sun;  ///< compass direction and height in degrees
    std::optional<bool> color;                     ///< whether the heights' colours show
    std::optional<bool> mixColors;                 ///< whether also where a picture lies on the ground
    std::optional<bool> sea;                       ///< whether water shows; a guess goes by the heights
    std::optional<double> seaLevel;                ///< height of the water in metres
    std::optional<bool> holes;                     ///< whether cells without data are open, or else filled
    std::string palette;                           ///< name of the ramp; empty for colours of its own
};

ProjectView ViewOf(const ProjectSettings& settings);

/// Remembers what is set of a view; other settings stay, but for those that would contradict it: a new place of the
/// camera ends the old aim, a new direction the old place. \throws StorageError
void RememberView(ProjectPlace& place, const ProjectView& view);

/// Leaves the whole view to the program again. \throws StorageError
void ForgetView(ProjectPlace& place);

/// Leaves the sea to the program again. \throws StorageError
void ForgetSea(ProjectPlace& place);

/// Leaves the level of detail to the program again. \throws StorageError
void ForgetLevelOfDetail(ProjectPlace& place);

}  // namespace tessara
