#include "app/viewer/work/terrain_work.h"

#include "app/viewer/camera/camera_controller.h"
#include "app/viewer/terrain/opened_terrain.h"
#include "app/viewer/terrain/sculptor.h"
#include "app/viewer/terrain/terrain_document.h"
#include "host/elevation/elevation_writer.h"
#include "host/project/project_file.h"
#include "host/project/project_writer.h"

#include <filesystem>
#include <utility>

namespace tessara {

namespace {

std::string NameFor(const std::string& path)
{
    const std::string stem = std::filesystem::path(path).stem().string();
    return stem.empty() ? "sample" : stem;
}

}  // namespace

TerrainWork::TerrainWork(TerrainDocument& document, const Sculptor& sculptor, const CameraController& camera,
                         const ViewSettings& settings, const HeightColors& colors, const ViewerListener& changed)
    : document_(document),
      sculptor_(sculptor),
      camera_(camera),
      settings_(settings),
      colors_(colors),
      changed_(changed),
      element_(NameFor(document.Path()))
{
}

void TerrainWork::Begin(const std::optional<SavedTerrain>& saved)
{
    if (saved) {
        project_ = saved->project;
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
    return {sculptor_.State(), TexturesOf(document_.Session().Surface(), images_), {settings_, colors_}};
}

bool TerrainWork::IsUnsaved() const
{
    return recovered_ || State() != saved_;
}

void TerrainWork::WriteProject(ProjectWriter& writer) const
{
    ComPtr<ProjectPlace> place;
    if (!project_.empty() && IsProjectFile(project_)) {
        const ProjectFile old(project_);
        for (const auto& [name, value] : old.Settings())
            writer.Set(name, value);
        for (const std::string& name : old.Elements()) {
            auto copy = writer.CopyElement(*old.Open(name));
            if (name == element_)
                place = std::move(copy);
        }
    }
    if (!place)
        place = writer.AddElement(element_);
    const GroundFrame& ground = document_.Session().Ground();
    const ProjectLook look{settings_, colors_};
    WriteTerrain(*place, document_.Session(), document_.Frame(), ground.Exaggeration(), ViewFor(look, camera_, ground));
    RememberLook(*place, look);
}

void TerrainWork::SaveProject(const std::string& path)
{
    ProjectWriter writer(path);
    WriteProject(writer);
    writer.Commit();
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
