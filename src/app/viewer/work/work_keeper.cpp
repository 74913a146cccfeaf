#include "app/viewer/work/work_keeper.h"

#include "host/project/project_file.h"
#include "host/project/project_writer.h"

#include <utility>

namespace tessara {

namespace {

constexpr const char* kTerrain = "autosave.terrain";

}  // namespace

void WorkKeeper::Adopt(Recovery&& recovery)
{
    autosave_ = std::make_unique<Autosave>(std::move(recovery));
    kept_.reset();
}

void WorkKeeper::Update(Viewer& viewer)
{
    if (!viewer.HasUnsavedWork()) {
        Forget();
        return;
    }
    WorkState work = viewer.Work();
    if (kept_ == work)
        return;
    if (!autosave_)
        autosave_ = std::make_unique<Autosave>();
    autosave_->Keep(viewer.ProjectPath(), [&viewer](ProjectWriter& writer) {
        viewer.WriteProject(writer);
        writer.Set(kTerrain, viewer.Element());
    });
    kept_ = std::move(work);
}

void WorkKeeper::Forget() noexcept
{
    if (autosave_)
        autosave_->Forget();
    kept_.reset();
}

std::string KeptTerrain(const ProjectFile& project)
{
    return TextOf(project.Settings(), kTerrain);
}

}  // namespace tessara
