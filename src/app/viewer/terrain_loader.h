#pragma once

#include "app/scene/light_map.h"
#include "host/elevation/elevation_file.h"
#include "host/vector3.h"

#include <atomic>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace tessara {

/// A terrain that was read, with the light that falls on it.
struct LoadedTerrain {
    std::string path;  ///< empty for the built-in sample
    ElevationData data;
    LightMap light;
};

/// Reads a terrain on a thread of its own, while somebody watches and may cancel.
class TerrainLoader {
public:
    /// Begins. \param path empty for the built-in sample
    TerrainLoader(std::string path, const ElevationReadOptions& reading, double exaggeration, const Vector3& sun);
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
    std::optional<LoadedTerrain> Take();

private:
    struct Cancelled {};

    void Run(const ElevationReadOptions& reading, double exaggeration, const Vector3& sun);
    void Show(double fraction);

    LoadedTerrain terrain_;
    std::atomic<double> fraction_{0.0};
    std::atomic<bool> cancelled_{false};
    std::atomic<bool> done_{false};
    std::exception_ptr failure_;
    std::thread thread_;
};

}  // namespace tessara
