#pragma once

#include "app/viewer/picture/height_colors.h"
#include "app/viewer/work/view_settings.h"
#include "host/project/project_setting.h"

namespace tessara {

class CameraController;
class GroundFrame;
class ProjectPlace;
struct ProjectTerrain;
struct ProjectView;

/// What a project keeps of the way in which a viewer shows a terrain, but for the camera. A change of it is unsaved
/// work; a movement of the camera isn't.
struct ProjectLook {
    ViewSettings settings;
    HeightColors colors;

    /// Whether a project would keep the same of both.
    bool operator==(const ProjectLook& other) const;
};

/// The settings with what a project says of them. \param stored settings of the terrain's place
ViewSettings WithLook(ViewSettings settings, const ProjectTerrain& terrain, const ProjectSettings& stored);

/// The colours that a project has. \param low,high heights in metres that a ramp covers where the project doesn't say
HeightColors ColorsOf(const ProjectTerrain& terrain, const ProjectSettings& stored, double low, double high);

/// The look and the camera as a project remembers them for every program.
ProjectView ViewFor(const ProjectLook& look, const CameraController& camera, const GroundFrame& ground);

/// Remembers what only a viewer uses of a look. \throws StorageError
void RememberLook(ProjectPlace& place, const ProjectLook& look);

/// Puts a camera where a project says; where it says nothing, the camera stays. What it only says the direction of sees
/// all of the terrain.
void Aim(CameraController& camera, const ProjectView& view, const GroundFrame& ground);

}  // namespace tessara
