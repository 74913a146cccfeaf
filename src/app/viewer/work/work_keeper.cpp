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

void WorkKeeper::Update(const TerrainWork& work)
{
    if (!work.IsUnsaved()) {
        Forget();
        return;
    }
    WorkState state = work.State();
    if (kept_ == state)
        return;
    if (!autosave_)
        autosave_ = std::make_unique<Autosave>();
    autosave_->Keep(work.ProjectPath(), [&work](ProjectWriter& writer) {
        work.WriteProject(writer);
        writer.Set(kTerrain, work.Element());
    });
    kept_ = std::move(state);
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
