#pragma once

#include "app/viewer/terrain/terrain_loader.h"
#include "app/viewer/viewer.h"

#include <wx/timer.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class wxWindow;

namespace tessara {

class SaveDesk;
class SettingsStore;
class StatusLine;
class WindowPanes;
class WorkWatch;

/// Where files are opened: read beside the work, with progress that can be cancelled. After a failure the old terrain
/// stays.
class FileDesk {
public:
    /// What the desk works with. All outlive it.
    struct Neighbours {
        wxWindow& window;
        tessara::Viewer& viewer;
        WindowPanes& panes;
        StatusLine& status;
        SettingsStore& store;
        WorkWatch& watch;
        SaveDesk& saves;
    };
    struct Listener {
        std::function<bool()> isBusy;   ///< a command is at work on the old terrain
        std::function<void()> opened;   ///< another terrain is open
        std::function<void()> changed;  ///< reading has ended, one way or the other
    };

    FileDesk(const Neighbours& neighbours, ElevationReadOptions reading, Listener listener);

    /// Opens the first file, or what a crash has left.
    void Start(const std::string& path, const std::string& element);

    void AskAndOpen();

    /// \param path empty for the built-in sample \param element which terrain of a project; empty to ask where there
    /// are several
    void Load(const std::string& path, const std::string& element = {});

    /// \param index in the list of recent files; nothing where there is none
    void LoadRecent(std::size_t index);

    bool IsLoading() const noexcept { return loader_ != nullptr; }
    void Cancel();

private:
    void Begin(TerrainRequest terrain);
    void DropLoader();
    void WatchLoader();

    /// A first look at a large terrain, unless something was done to the old one meanwhile: that has its question
    /// later.
    void ShowCoarse();
    void Open(OpenedTerrain terrain);

    /// \return nothing while no terrain is open
    std::optional<WorkState> StateOfWork() const;

    Neighbours to_;
    ElevationReadOptions reading_;
    Listener listener_;
    std::string loading_;  // the file, or the project of recovered work
    bool recovering_ = false;
    std::optional<WorkState> left_;  // the work that may be left for what is being read
    std::unique_ptr<TerrainLoader> loader_;
    std::vector<std::unique_ptr<TerrainLoader>> leaving_;  // cancelled, until they have noticed
    wxTimer timer_;
};

}  // namespace tessara
