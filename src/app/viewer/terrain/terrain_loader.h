#pragma once

#include "app/viewer/terrain/opened_terrain.h"
#include "app/viewer/work/view_settings.h"
#include "host/elevation/elevation_file.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace tessara {

/// What to read.
struct TerrainRequest {
    std::string path;       ///< an elevation file or a project; empty for the built-in sample
    std::string element{};  ///< which terrain of a project; empty for the first one
    ElevationReadOptions reading{};
    ViewSettings settings{};  ///< to show it with, where no project says otherwise
    PictureSize size{};
    std::optional<std::string> recoveredFor{};  ///< the file holds recovered work on this project, empty for a new one
};

/// Reads a terrain and prepares it on its own thread; the caller can watch the progress and cancel.
class TerrainLoader {
public:
    /// Begins.
    explicit TerrainLoader(TerrainRequest request);
    TerrainLoader(const TerrainLoader&) = delete;
    TerrainLoader& operator=(const TerrainLoader&) = delete;

    /// Cancels and waits.
    ~TerrainLoader();

    bool IsDone() const noexcept { return done_; }

    /// 0 to 1, never falling.
    double Fraction() const noexcept { return fraction_; }

    void Cancel() noexcept { cancelled_ = true; }

    /// A coarse form of a large terrain, as soon as its heights are known: for a first look, while the rest is worked
    /// out. \return nothing before, and after it was taken
    std::optional<OpenedTerrain> TakeCoarse();

    /// The terrain, once it is done. \return nothing when it was cancelled
    /// \throws std::runtime_error with one sentence that names the file
    std::optional<OpenedTerrain> Take();

private:
    struct Cancelled {};

    void Run();
    ElevationData Read();
    ElevationData ReadProject();
    void MakeCoarse(const ElevationData& data);
    void Show(double fraction);

    TerrainRequest request_;
    std::optional<SavedTerrain> saved_;
    std::optional<OpenedTerrain> terrain_;
    std::mutex mutex_;
    std::optional<OpenedTerrain> coarse_;  // guarded by mutex_
    std::atomic<double> fraction_{0.0};
    std::atomic<bool> cancelled_{false};
    std::atomic<bool> done_{false};
    std::exception_ptr failure_;
    std::thread thread_;
};

}  // namespace tessara
