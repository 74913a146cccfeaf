#include "app/viewer/terrain_loader.h"

#include "app/viewer/background_light.h"
#include "host/elevation/sample_terrain.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace tessara {

namespace {

/// Share of the time that the reading takes.
constexpr double kReading = 0.8;

}  // namespace

TerrainLoader::TerrainLoader(std::string path, const ElevationReadOptions& reading, double exaggeration,
                             const Vector3& sun)
{
    terrain_.path = std::move(path);
    thread_ = std::thread([this, reading, exaggeration, sun] { Run(reading, exaggeration, sun); });
}

TerrainLoader::~TerrainLoader()
{
    Cancel();
    if (thread_.joinable())
        thread_.join();
}

void TerrainLoader::Show(double fraction)
{
    if (cancelled_)
        throw Cancelled{};
    fraction_ = fraction;
}

void TerrainLoader::Run(const ElevationReadOptions& reading, double exaggeration, const Vector3& sun)
{
    try {
        const auto progress = [this](double fraction) { Show(kReading * fraction); };
        terrain_.data = terrain_.path.empty() ? MakeSampleTerrain(kSampleTerrainSize, kSampleTerrainSeed, progress)
                                              : ReadElevationFile(terrain_.path, reading, progress);
        const auto lighting = [this](double fraction) { Show(kReading + (1.0 - kReading) * fraction); };
        terrain_.light = MakeLightMap(terrain_.data, exaggeration, sun, BackgroundLight::kSide, lighting);
    } catch (const Cancelled&) {
    } catch (const std::bad_alloc&) {
        failure_ = std::make_exception_ptr(
            std::runtime_error("There is not enough memory to open " +
                               (terrain_.path.empty() ? std::string("the sample") : terrain_.path) + "."));
    } catch (...) {
        failure_ = std::current_exception();
    }
    done_ = true;
}

std::optional<LoadedTerrain> TerrainLoader::Take()
{
    if (thread_.joinable())
        thread_.join();
    const std::exception_ptr failure = std::exchange(failure_, nullptr);
    if (failure && !cancelled_)
        std::rethrow_exception(failure);
    if (cancelled_ || terrain_.data.metres.empty())
        return std::nullopt;
    return std::move(terrain_);
}

}  // namespace tessara
