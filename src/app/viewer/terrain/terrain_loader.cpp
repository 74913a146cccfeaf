#include "app/viewer/terrain/terrain_loader.h"

#include "app/view/framing.h"
#include "app/view/height_span.h"
#include "app/viewer/work/project_look.h"
#include "app/viewer/work/work_keeper.h"
#include "host/ground_frame.h"
#include "host/project/project_file.h"
#include "samples/country/sample_terrain.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tessara {

namespace {

/// Share of the time that the reading takes.
constexpr double kReading = 0.5;

/// A terrain with so many points along an edge gets a coarse form with so many for a first look.
constexpr int kLarge = 1500;
constexpr int kCoarseSide = 257;

}  // namespace

TerrainLoader::TerrainLoader(TerrainRequest request) : request_(std::move(request))
{
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

ElevationData TerrainLoader::ReadProject()
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
    if (!saved.recovered)
        saved.version = project.Version();
    saved.terrain.elevations = {};
    ElevationData data = saved.terrain.data;
    saved.terrain.data.metres = {};
    ScanHeights(data);
    const HeightSpan span = SpanOf(data);
    saved.look = LookIn(saved.terrain, saved.place->Settings(), span);
    saved.aim = AimOf(saved.terrain.view);
    const GroundFrame ground(data, saved.look.exaggeration);
    const double azimuth = PoseOf(saved.aim, ground, OutlineOf(data, span, ground), 1, 1).azimuth;
    request_.settings = saved.settings = WithLook(request_.settings, saved.look, azimuth);
    saved_ = std::move(saved);
    return data;
}

ElevationData TerrainLoader::Read()
{
    const auto progress = [this](double fraction) { Show(kReading * fraction); };
    if (request_.path.empty())
        return MakeSampleTerrain(kSampleTerrainSize, kSampleTerrainSeed, progress);
    if (IsProjectFile(request_.path))
        return ReadProject();
    return ReadElevationFile(request_.path, request_.reading, progress);
}

void TerrainLoader::MakeCoarse(const ElevationData& data)
{
    if (std::max(data.width, data.height) < kLarge)
        return;
    OpenedTerrain coarse = PrepareTerrain(request_.path, Coarse(data, kCoarseSide), request_.settings, request_.size);
    coarse.saved = saved_;
    const std::lock_guard lock(mutex_);
    coarse_ = std::move(coarse);
}

void TerrainLoader::Run()
{
    try {
        ElevationData data = Read();
        Show(kReading);
        MakeCoarse(data);
        OpenedTerrain terrain =
            PrepareTerrain(request_.path, std::move(data), request_.settings, request_.size,
                           [this](double fraction) { Show(kReading + (1.0 - kReading) * fraction); });
        terrain.saved = std::move(saved_);
        terrain_ = std::move(terrain);
    } catch (const Cancelled&) {
    } catch (const std::bad_alloc&) {
        failure_ = std::make_exception_ptr(
            std::runtime_error("There is not enough memory to open " +
                               (request_.path.empty() ? std::string("the sample") : request_.path) + "."));
    } catch (...) {
        failure_ = std::current_exception();
    }
    done_ = true;
}

std::optional<OpenedTerrain> TerrainLoader::TakeCoarse()
{
    const std::lock_guard lock(mutex_);
    return cancelled_ ? std::nullopt : std::exchange(coarse_, std::nullopt);
}

std::optional<OpenedTerrain> TerrainLoader::Take()
{
    if (thread_.joinable())
        thread_.join();
    const std::exception_ptr failure = std::exchange(failure_, nullptr);
    if (failure && !cancelled_)
        std::rethrow_exception(failure);
    return cancelled_ ? std::nullopt : std::exchange(terrain_, std::nullopt);
}

}  // namespace tessara
