#include "samples/country/sample_terrain.h"

#include "host/elevation/elevation_error.h"
#include "samples/country/height_field.h"
#include "samples/country/river_erosion.h"
#include "samples/country/sample_country.h"
#include "samples/noise/lattice_noise.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace tessara {
namespace {

constexpr double kEdge = 15360.0;     // metres along an edge of the country
constexpr double kMargin = 1.0 / 16;  // on every side, worn along and cut off: the rivers don't know of the edge
constexpr double kDomain = 1.0 + 2.0 * kMargin;
constexpr double kSeaRise = 20.0;  // metres that the sea drowns at the end, into the mouths of the valleys
constexpr double kSteepening = 1.4;

/// One of the grids that the country is worn on, each twice as fine as the one before. What is worn on a coarse grid
/// gives the great valleys, and the finer ones add to it.
struct Stage {
    int size;
    int steps;
};
constexpr Stage kStages[] = {{145, 60}, {289, 25}, {577, 12}, {1153, 5}, {2305, 2}};

/// The stages that a terrain of `size` needs: up to the first one about as fine, or all of them.
std::vector<Stage> StagesFor(int size)
{
    std::vector<Stage> stages;
    for (const Stage& stage : kStages) {
        stages.push_back(stage);
        if (stage.size >= 0.8 * kDomain * size)
            break;
    }
    return stages;
}

/// Tells how far the stages have come, a step counting by its cells.
class StageProgress {
public:
    StageProgress(const std::vector<Stage>& stages, const ProgressCallback& callback) : callback_(callback)
    {
        for (const Stage& stage : stages)
            total_ += Cost(stage) * stage.steps;
    }
    void StepDone(const Stage& stage)
    {
        done_ += Cost(stage);
        if (callback_)
            callback_(done_ / total_);
    }

private:
    static double Cost(const Stage& stage) { return static_cast<double>(stage.size) * stage.size; }

    const ProgressCallback& callback_;
    double done_ = 0.0;
    double total_ = 0.0;
};

/// Height before any wear: a bare slope out of the sea, or what a coarser grid has come to.
double UnwornHeight(const SampleCountry& country, const HeightField& coarse, double x, double y, double inland)
{
    if (coarse.heights.empty())
        return 500.0 * inland + 100.0 * country.Roughness(x, y);
    // The rivers of the coarse grid ran along its directions.
    country.Bend(x, y, coarse.step);
    return coarse.Sample(x, y);
}

/// Fills in all but the height of a cell.
void LayGround(RiverErosion& erosion, std::size_t cell, const SampleCountry& country, double x, double y, double inland)
{
    const double uplift = country.Uplift(x, y, inland);
    const double hardness = country.Hardness(x, y);
    const double mountain = SmoothStep(0.1, 0.6, uplift);
    erosion.uplift[cell] = static_cast<float>(600.0 * uplift);
    erosion.hardness[cell] = static_cast<float>(hardness);
    erosion.repose[cell] = static_cast<float>(hardness * (0.2 + 0.7 * SmoothStep(0.05, 0.7, uplift)));
    erosion.creep[cell] = static_cast<float>(500.0 - 350.0 * mountain);
    erosion.spring[cell] = static_cast<float>(1000.0 + 60000.0 * (1.0 - mountain));
}

/// Evenly spread between -0.5 and 0.5.
double Chance(int column, int row, std::uint32_t seed)
{
    const auto hash = HashCell(static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(row), seed);
    return hash / 4294967296.0 - 0.5;
}

/// Wears the country on the grid of a stage. \param coarse what the stage before came to, without heights for the first
HeightField Wear(const SampleCountry& country, const Stage& stage, const HeightField& coarse, StageProgress& progress)
{
    HeightField field{stage.size, -kMargin, kDomain / (stage.size - 1), {}};
    const double spacing = kEdge * field.step;
    RiverErosion erosion(stage.size, static_cast<float>(spacing));
    for (int row = 0; row < stage.size; ++row) {
        for (int column = 0; column < stage.size; ++column) {
            const double x = field.Place(column);
            const double y = field.Place(row);
            const double inland = country.Inland(x, y);
            if (inland <= 0.0)
                continue;
            const std::size_t cell = field.Index(column, row);
            LayGround(erosion, cell, country, x, y, inland);
            // A little unevenness starts the small valleys.
            const double grain = 0.25 * spacing * Chance(column, row, static_cast<std::uint32_t>(stage.size));
            const double height = UnwornHeight(country, coarse, x, y, inland) + grain;
            erosion.heights[cell] = static_cast<float>(std::max(1.0, height));
        }
    }
    for (int step = 0; step < stage.steps; ++step) {
        erosion.Step(0.6f);
        progress.StepDone(stage);
    }
    field.heights = std::move(erosion.heights);
    return field;
}

/// Evens out the low ground by the sea, as waves and silt do, in one of several passes.
void SmoothShore(HeightField& field)
{
    const std::vector<float> before = field.heights;
    const std::ptrdiff_t row = field.size;
    for (int y = 1; y + 1 < field.size; ++y) {
        for (int x = 1; x + 1 < field.size; ++x) {
            const float* at = &before[field.Index(x, y)];
            if (*at <= 0.0f || *at >= 150.0f)
                continue;
            const float straight = at[-row] + at[-1] + at[1] + at[row];
            const float across = at[-row - 1] + at[1 - row] + at[row - 1] + at[row + 1];
            const float mean = (4.0f * straight + across) / 20.0f;
            const auto share = static_cast<float>(0.8 * (1.0 - SmoothStep(10.0, 150.0, static_cast<double>(*at))));
            field.heights[field.Index(x, y)] = *at + (mean - *at) * share;
        }
    }
}

HeightField WearCountry(const SampleCountry& country, int size, const ProgressCallback& callback)
{
    const std::vector<Stage> stages = StagesFor(size);
    StageProgress progress(stages, callback);
    HeightField field;
    for (const Stage& stage : stages)
        field = Wear(country, stage, field, progress);
    const double cells = field.size / 577.0;
    const int passes = std::clamp(static_cast<int>(std::lround(12.0 * cells * cells)), 1, 48);
    for (int pass = 0; pass < passes; ++pass)
        SmoothShore(field);
    return field;
}

}  // namespace

ElevationData MakeSampleTerrain(int size, std::uint32_t seed, const ProgressCallback& progress)
{
    if (size < kSmallestSampleSize || size > kLargestSampleSize)
        throw ElevationError("The sample terrain can have " + std::to_string(kSmallestSampleSize) + " to " +
                             std::to_string(kLargestSampleSize) + " cells along an edge, not " + std::to_string(size) +
                             ".");
    const HeightField field = WearCountry(SampleCountry(seed), size, progress);
    ElevationData data;
    data.width = data.height = data.sourceWidth = data.sourceHeight = size;
    data.metres.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    const double step = 1.0 / (size - 1);
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            const double height = (field.Sample(column * step, row * step) - kSeaRise) * kSteepening;
            data.metres.push_back(static_cast<float>(std::max(0.0, height)));
        }
    }
    ScanHeights(data);
    data.spacingX = data.spacingY = data.stepX = kEdge * step;
    data.stepY = -data.stepX;
    data.georeferenced = true;
    data.originY = kEdge;
    data.referenceSystem = "Tessara sample country";
    data.referenceWkt = "LOCAL_CS[\"Tessara sample country\",UNIT[\"metre\",1]]";
    data.format = "Sample terrain";
    return data;
}

}  // namespace tessara
