#pragma once

#include "app/view/light_map.h"
#include "host/elevation/elevation_file.h"
#include "host/project/project_place.h"
#include "host/project/project_terrain.h"
#include "host/vector3.h"

#include <atomic>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace tessara {

/// What a project says of a terrain beside its heights, which the terrain's own data and elevations no longer hold.
struct SavedTerrain {
    std::string project;  ///< path; empty for recovered work that was never saved
    ComPtr<ProjectPlace> place;
    ProjectTerrain terrain;
    bool recovered = false;  ///< the project doesn't hold what was read
};

/// A terrain that was read, with the light that falls on it.
struct OpenedTerrain {
    std::string path;  ///< of the file that it was read from, empty for the built-in sample
    ElevationData data;
    LightMap light;
    std::optional<SavedTerrain> saved{};  ///< of a project
    double exaggeration = 1.0;            ///< that the light was made for
    Vector3 sun{};                        ///< likewise
};

/// What to read.
struct TerrainRequest {
    std::string path;       ///< an elevation file or a project; empty for the built-in sample
    std::string element{};  ///< which terrain of a project; empty for the first one
    ElevationReadOptions reading{};
    double exaggeration = 1.0;                  ///< where no project says otherwise
    Vector3 sun{};                              ///< towards it, likewise
    std::optional<std::string> recoveredFor{};  ///< the file holds recovered work on this project, empty for a new one
};

/// Reads a terrain on a thread of its own, while somebody watches and may cancel.
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

    /// The terrain, once it is done. \return nothing when it was cancelled
    /// \throws std::runtime_error with one sentence that names the file
    std::optional<OpenedTerrain> Take();

private:
    struct Cancelled {};

    void Run();
    void Read();
    void ReadProject();
    void Show(double fraction);

    TerrainRequest request_;
    OpenedTerrain terrain_;
    std::atomic<double> fraction_{0.0};
    std::atomic<bool> cancelled_{false};
    std::atomic<bool> done_{false};
    std::exception_ptr failure_;
    std::thread thread_;
};

}  // namespace tessara
