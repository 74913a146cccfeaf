#include "app/viewer/terrain/terrain_loader.h"

#include "app/view/atmosphere.h"
#include "app/viewer/picture/background_light.h"
#include "app/viewer/work/work_keeper.h"
#include "host/project/project_file.h"
#include "samples/country/sample_terrain.h"

#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tessara {

namespace {

/// Share of the time that the reading takes.
constexpr double kReading = 0.8;

}  // namespace

TerrainLoader::TerrainLoader(TerrainRequest request) : request_(std::move(request))
{
    terrain_.path = request_.path;
    thread_ = std::thread([this] { Run(); });
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

void TerrainLoader::ReadProject()
{
    const ProjectFile project(request_.path);
    const std::vector<std::string>& names = project.Elements();
    std::string element = request_.recoveredFor ? KeptTerrain(project) : request_.element;
    if (element.empty() && !names.empty())
        element = names.front();
    SavedTerrain saved;
    saved.place = project.Open(element);
    if (!saved.place)
        throw std::runtime_error("The project \"" + request_.path + "\" has no terrain" +
                                 (names.empty() ? "." : " of the name \"" + element + "\"."));
    Show(0.1 * kReading);
    saved.terrain = ReadTerrain(*saved.place);
    saved.project = request_.recoveredFor.value_or(request_.path);
    saved.recovered = request_.recoveredFor.has_value();
    saved.terrain.elevations = {};
    terrain_.data = saved.terrain.data;
    saved.terrain.data.metres = {};
    ScanHeights(terrain_.data);
    request_.exaggeration = saved.terrain.exaggeration;
    if (saved.terrain.view.sun)
        request_.sun = SunlitAtmosphere(saved.terrain.view.sun->first, saved.terrain.view.sun->second).sunDirection;
    terrain_.saved = std::move(saved);
}

void TerrainLoader::Read()
{
    const auto progress = [this](double fraction) { Show(kReading * fraction); };
    if (request_.path.empty())
        terrain_.data = MakeSampleTerrain(kSampleTerrainSize, kSampleTerrainSeed, progress);
    else if (IsProjectFile(request_.path))
        ReadProject();
    else
        terrain_.data = ReadElevationFile(request_.path, request_.reading, progress);
}

void TerrainLoader::Run()
{
    try {
        Read();
        const auto lighting = [this](double fraction) { Show(kReading + (1.0 - kReading) * fraction); };
        terrain_.exaggeration = request_.exaggeration;
        terrain_.sun = request_.sun;
        terrain_.light =
            MakeLightMap(terrain_.data, request_.exaggeration, request_.sun, BackgroundLight::kSide, lighting);
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

std::optional<OpenedTerrain> TerrainLoader::Take()
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
