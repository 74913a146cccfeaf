#include "app/viewer/viewer.h"
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

/// Colours, camera and the ties to a project of a terrain that has just been opened.
void Viewer::TakeSaved(const std::optional<SavedTerrain>& saved)
{
    projectPath_.clear();
    element_ = NameFor(document_->Path());
    textureState_ = 0;
    if (saved) {
        colors_ = ColorsOf(saved->terrain, saved->place->Settings(), colors_.low, colors_.high);
        SetColors(colors_.low, colors_.high);
        Aim(*controller_, saved->terrain.view, document_->Session().Ground());
        projectPath_ = saved->project;
        element_ = saved->place->Name();
    }
    saved_ = Work();
    recovered_ = saved && saved->recovered;
}

void Viewer::TexturesChanged()
{
    ++textureState_;
    changed_({true, false, true});
}

WorkState Viewer::Work() const
{
    return {document_ ? document_->HeightState() : 0, textureState_, {settings_, colors_}};
}

bool Viewer::HasUnsavedWork() const
{
    if (!document_)
        return false;
    return recovered_ || (projectPath_.empty() ? document_->IsModified() : Work() != saved_);
}

void Viewer::WriteProject(ProjectWriter& writer)
{
    ComPtr<ProjectPlace> place;
    if (!projectPath_.empty() && IsProjectFile(projectPath_)) {
        const ProjectFile old(projectPath_);
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
    const GroundFrame& ground = document_->Session().Ground();
    const ProjectLook look{settings_, colors_};
    WriteTerrain(*place, document_->Session(), document_->Frame(), ground.Exaggeration(),
                 ViewFor(look, *controller_, ground));
    RememberLook(*place, look);
}

void Viewer::SaveProject(const std::string& path)
{
    ProjectWriter writer(path);
    WriteProject(writer);
    writer.Commit();
    projectPath_ = path;
    document_->HeightsSaved();
    saved_ = Work();
    recovered_ = false;
    changed_({false, false, true});
}

}  // namespace tessara
