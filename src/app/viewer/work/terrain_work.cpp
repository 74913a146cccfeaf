#include "app/viewer/work/terrain_work.h"

#include "app/viewer/camera/camera_controller.h"
#include "app/viewer/terrain/opened_terrain.h"
#include "app/viewer/terrain/sculptor.h"
#include "app/viewer/terrain/terrain_document.h"
#include "host/elevation/elevation_writer.h"
#include "host/project/element_name.h"
#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "host/storage/storage_error.h"

#include <utility>

namespace tessara {

TerrainWork::TerrainWork(TerrainDocument& document, const Sculptor& sculptor, const CameraController& camera,
                         const ViewSettings& settings, const HeightColors& colors, const ViewerListener& changed)
    : document_(document),
      sculptor_(sculptor),
      camera_(camera),
      settings_(settings),
      colors_(colors),
      changed_(changed),
      element_(NameFromFile(document.Path()))
{
}

void TerrainWork::Begin(const std::optional<SavedTerrain>& saved)
{
    if (saved) {
        project_ = saved->project;
        version_ = saved->version;
        element_ = saved->place->Name();
    }
    saved_ = State();
    if (saved)
        TakeSavedDetail(saved_.textures, *saved->place);
    recovered_ = saved && saved->recovered;
}

void TerrainWork::TexturesChanged()
{
    ++images_;
    changed_({.picture = true, .state = true});
}

WorkState TerrainWork::State() const
{
    return {sculptor_.State(), TexturesOf(document_.Session().Surface(), images_), LookOf(settings_, colors_)};
}

bool TerrainWork::IsUnsaved() const
{
    return recovered_ || State() != saved_;
}

void TerrainWork::WriteProject(ProjectWriter& writer) const
{
    const ComPtr<ProjectPlace> place = writer.Open(element_);
    if (place && !recovered_)
        WriteChanges(*place);
    else
        WriteAll(place ? *place : *writer.AddElement(UsableName(element_)));
}

void TerrainWork::WriteAll(ProjectPlace& place) const
{
    ProjectView view;
    Remember(camera_.CurrentAim(), view);
    WriteTerrain(place, document_.Session(), document_.AsInSession(), settings_.exaggeration, view);
    RememberLook(place, LookOf(settings_, colors_), nullptr);
}

/// What wasn't changed stays as the project holds it, to the bit.
void TerrainWork::WriteChanges(ProjectPlace& place) const
{
    const WorkState now = State();
    const bool ofSurface = now.heights != saved_.heights || now.textures != saved_.textures ||
                           now.look.sourceTexture != saved_.look.sourceTexture;
    ProjectView view;
    if (camera_.HasMoved()) {
        Remember(camera_.CurrentAim(), view);
        if (!ViewOf(place.Settings()).sun)
            view.sun = now.look.sun;  // it would follow the camera
    }
    if (ofSurface) {
        WriteTerrain(place, document_.Session(), document_.AsInSession(), now.look.exaggeration, view);
    } else {
        RememberView(place, view);
        if (now.look.exaggeration != saved_.look.exaggeration)
            WriteExaggeration(place, now.look.exaggeration);
        if (now.look.colors != saved_.look.colors)
            WriteColors(place, now.look.colors);
    }
    Look before = saved_.look;
    if (now.heights != saved_.heights)
        before.colors = {};  // what isn't said follows the heights
    RememberLook(place, now.look, &before);
    if (now.look.errorPixels != before.errorPixels)
        ForgetLevelOfDetail(place);
}

void TerrainWork::SaveProject(const std::string& path, IfChanged ifChanged)
{
    const bool goesOn = !project_.empty() && IsProjectFile(project_);
    ProjectWriter writer(path, goesOn ? project_ : std::string());
    if (ifChanged == IfChanged::Refuse && path == project_ && version_ && writer.Replaced() &&
        writer.Replaced() != version_)
        throw ProjectChanged("Another program has changed \"" + path + "\" since it was opened here.");
    WriteProject(writer);
    writer.Commit();
    version_ = VersionOf(path);
    project_ = path;
    saved_ = State();
    recovered_ = false;
    changed_({.state = true});
}

void TerrainWork::SaveHeights(const std::string& path)
{
    WriteElevationFile(document_.Data(), path);
    if (project_.empty())
        saved_.heights = sculptor_.State();
    changed_({.state = true});
}

}  // namespace tessara
