#pragma once

#include "app/viewer/viewer_change.h"
#include "app/viewer/work/project_look.h"
#include "app/viewer/work/texture_state.h"
#include "host/storage/file_version.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace tessara {

class CameraController;
class ProjectPlace;
class ProjectWriter;
class Sculptor;
class TerrainDocument;
struct SavedTerrain;

/// The state of the work on a terrain at one moment: what is worth saving of it.
struct WorkState {
    std::uint64_t heights = 0;
    TextureState textures;
    Look look;

    bool operator==(const WorkState&) const = default;
};

/// Another program has changed a project since it was opened here: who saves into it decides whose changes count.
class ProjectChanged : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a person has done to a terrain, and where that is kept: in a project, in a file of heights, or nowhere yet.
class TerrainWork {
public:
    /// \param document,sculptor,camera,settings,colors,changed outlive this object
    TerrainWork(TerrainDocument& document, const Sculptor& sculptor, const CameraController& camera,
                const ViewSettings& settings, const HeightColors& colors, const ViewerListener& changed);

    /// The terrain is as somebody has just opened it. \param saved what its project says, if it has one
    void Begin(const std::optional<SavedTerrain>& saved);

    /// The project that the terrain belongs to; empty where it was never saved into one.
    const std::string& ProjectPath() const noexcept { return project_; }

    /// The terrain's name in the project.
    const std::string& Element() const noexcept { return element_; }

    /// Whether the work was recovered and is in no project that a person knows.
    bool IsRecovered() const noexcept { return recovered_; }

    /// An image was imported, or a texture chosen.
    void TexturesChanged();

    /// Tells two states of the work apart.
    WorkState State() const;

    /// Whether something would be lost with the terrain: every change that a project would keep, but for the camera's.
    bool IsUnsaved() const;

    /// Puts the terrain into a project that is being written, which began with the one that it belongs to.
    /// \throws std::runtime_error for the user
    void WriteProject(ProjectWriter& writer) const;

    /// What to do where another program has changed the project since it was opened here: to say so, or to put the
    /// changes made here into it as it is now.
    enum class IfChanged { Refuse, Merge };

    /// Saves the terrain into a project, which it belongs to from now on.
    /// \throws ProjectChanged, with nothing written; std::runtime_error for the user
    void SaveProject(const std::string& path, IfChanged ifChanged = IfChanged::Refuse);

    /// Writes the heights as a GeoTIFF, or what else the name's ending asks for.
    /// \throws std::runtime_error with one sentence that names the file
    void SaveHeights(const std::string& path);

private:
    void WriteAll(ProjectPlace& place) const;
    void WriteChanges(ProjectPlace& place) const;

    TerrainDocument& document_;
    const Sculptor& sculptor_;
    const CameraController& camera_;
    const ViewSettings& settings_;
    const HeightColors& colors_;
    const ViewerListener& changed_;
    std::string project_;
    std::optional<FileVersion> version_;  // of the project, as it was read or saved
    std::string element_;
    unsigned images_ = 0;     // counts what was imported or chosen
    WorkState saved_;         // what files hold
    bool recovered_ = false;  // the project doesn't hold what was opened
};

}  // namespace tessara
