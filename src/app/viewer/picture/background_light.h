#pragma once

#include "app/view/light_map.h"
#include "host/elevation/elevation_data.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace tessara {

/// What a light map depends on.
struct LightConditions {
    std::uint64_t heights = 0;  ///< tells two states of a terrain's heights apart
    double exaggeration = 1.0;
    Vector3 sun{};  ///< unit vector towards it

    bool operator==(const LightConditions&) const = default;
};

/// Computes light maps on its own thread, one after the other, so that the picture doesn't wait for them. Of the
/// orders that come in meanwhile only the last one counts.
class BackgroundLight {
public:
    /// \param ready called on the thread when a map can be taken
    explicit BackgroundLight(std::function<void()> ready);
    BackgroundLight(const BackgroundLight&) = delete;
    BackgroundLight& operator=(const BackgroundLight&) = delete;
    ~BackgroundLight();

    /// Another terrain, which has its light: forgets what was ordered and what is ready. \param conditions of its light
    void Begin(const LightConditions& conditions);

    /// Orders a map for the heights as they are now, which are copied, unless the last one is for the same conditions.
    void Follow(const ElevationData& data, const LightConditions& conditions);

    /// The youngest map that is ready and hasn't been taken. \return nothing while there is none
    std::unique_ptr<LightMap> Take();

    /// Whether it is at work, or about to be.
    bool IsBusy();

    static constexpr int kSide = 2048;  ///< texels along an edge at most

private:
    struct Request {
        std::shared_ptr<const ElevationData> data;
        LightConditions conditions;
    };

    void Run();

    std::function<void()> ready_;
    LightConditions last_;                         // of the youngest map, ready or not
    std::weak_ptr<const ElevationData> snapshot_;  // the heights of the last order, while somebody works on them
    std::uint64_t snapshotOf_ = 0;                 // their state
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<Request> request_;
    std::unique_ptr<LightMap> result_;
    std::atomic<unsigned> orders_{0};  // so many were given; a map of an older one is dropped
    std::atomic<bool> ending_{false};
    bool busy_ = false;
    std::thread thread_;
};

}  // namespace tessara
