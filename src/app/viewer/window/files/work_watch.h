#pragma once

#include "app/viewer/terrain/terrain_loader.h"
#include "app/viewer/work/work_keeper.h"

#include <wx/timer.h>

#include <optional>

class wxWindow;

namespace tessara {

class PicturePane;
class StatusLine;
class Viewer;

/// Keeps unsaved work safe while the window is open, and offers what a crash has left.
class WorkWatch {
public:
    /// \param window,viewer,picture,status outlive this object
    WorkWatch(wxWindow& window, Viewer& viewer, PicturePane& picture, StatusLine& status);

    /// Offers what programs have left that ended without being asked, and begins to watch.
    /// \return what is to be read, where the user wants it back
    std::optional<TerrainRequest> Start();

    /// Another terrain is open. \param recovered it is the work that Start gave
    void Opened(bool recovered);

    /// The work is in a project.
    void Saved() noexcept { keeper_.Forget(); }

private:
    void Keep();

    wxWindow& window_;
    Viewer& viewer_;
    PicturePane& picture_;
    StatusLine& status_;
    WorkKeeper keeper_;
    std::optional<Recovery> recovery_;  // of what is being read
    wxTimer timer_;
};

}  // namespace tessara
