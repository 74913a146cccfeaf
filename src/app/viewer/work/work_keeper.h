#pragma once

#include "app/viewer/work/terrain_work.h"
#include "host/project/autosave.h"

#include <memory>
#include <optional>
#include <string>

namespace tessara {

class ProjectFile;

/// Keeps unsaved work safe, for the case that the program crashes. Ended in the ordinary way, it leaves
/// nothing behind.
class WorkKeeper {
public:
    /// Goes on with work that has been recovered, and that is not to be offered again.
    void Adopt(Recovery&& recovery);

    /// Keeps what work isn't saved and isn't kept yet, and forgets what has been saved since. For every minute or so,
    /// with the viewer's OpenGL context current. \throws std::runtime_error for the user; it is no use to go on then
    void Update(const TerrainWork& work);

    /// Discards what was kept; it is no longer needed.
    void Forget() noexcept;

private:
    std::unique_ptr<Autosave> autosave_;
    std::optional<WorkState> kept_;
};

/// Name of the terrain that somebody was at work on in a project that holds unsaved work.
std::string KeptTerrain(const ProjectFile& project);

}  // namespace tessara
