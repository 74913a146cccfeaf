#include "host/elevation/elevation_file.h"

#include "host/elevation/elevation_error.h"
#include "host/elevation/grid_choice.h"
#include "host/elevation/grid_reducer.h"
#include "host/elevation/ground_reference.h"
#include "host/elevation/raster_source.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

namespace tessara {
namespace {

constexpr std::int64_t kMostCells = std::int64_t{1} << 30;
constexpr double kReadShare = 0.9;  // of the progress; the rest is for filling

/// Sets the size that a grid is read at: the file's, or one of the same shape that is no finer than `resolution` and
/// has no more than `most` cells.
/// \param data with the spacing of the file's cells
void ChooseSize(double resolution, std::int64_t most, ElevationData& data)
{
    const auto enough = [&](int cells, double spacing) {
        return resolution > spacing ? std::max(1, static_cast<int>(std::lround(cells * spacing / resolution))) : cells;
    };
    data.width = enough(data.sourceWidth, data.spacingX);
    data.height = enough(data.sourceHeight, data.spacingY);
    if (resolution > 0.0 && resolution < std::min(data.spacingX, data.spacingY))
        data.notes.push_back("The file holds nothing finer than its cells; it was read as it is.");
    most = std::clamp<std::int64_t>(most, 1, kMostCells);
    if (std::int64_t{data.width} * data.height > most) {
        const double ratio = std::sqrt(static_cast<double>(data.width) * data.height / static_cast<double>(most));
        const auto reduced = [&](int size) { return std::max(1, static_cast<int>(std::lround(size / ratio))); };
        data.width = reduced(data.width);
        data.height = reduced(data.height);
        // A strip of one cell's breadth leaves all of them to its length.
        data.width =
            static_cast<int>(std::min(std::int64_t{data.width}, std::max<std::int64_t>(1, most / data.height)));
        data.height = static_cast<int>(std::min(std::int64_t{data.height}, most / data.width));
    }
    if (data.width < data.sourceWidth || data.height < data.sourceHeight)
        data.notes.push_back("The " + std::to_string(data.sourceWidth) + " x " + std::to_string(data.sourceHeight) +
                             " cells were reduced to " + std::to_string(data.width) + " x " +
                             std::to_string(data.height) + ".");
}

void Report(const ProgressCallback& progress, double fraction)
{
    if (progress)
        progress(fraction);
}

/// Widens a range by a row's heights.
void Widen(std::optional<std::pair<float, float>>& range, const float* row, int width)
{
    for (int x = 0; x < width; ++x) {
        if (std::isnan(row[x]))
            continue;
        if (!range)
            range = {row[x], row[x]};
        range->first = std::min(range->first, row[x]);
        range->second = std::max(range->second, row[x]);
    }
}

/// Reads the heights in the order of the file, not numbers where there are none.
void ReadHeights(RasterSource& source, ElevationData& data, const ProgressCallback& progress)
{
    const int width = source.ReadWidth();
    const int height = source.ReadHeight();
    const int rowsAtOnce = source.RowsAtOnce();
    data.metres.resize(static_cast<std::size_t>(data.width) * static_cast<std::size_t>(data.height));
    const bool isReduced = width != data.width || height != data.height;
    GridReducer reducer(width, height, data.width, data.height, data.metres.data());
    std::vector<float> rows;
    if (isReduced)
        rows.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(rowsAtOnce));
    for (int first = 0; first < height; first += rowsAtOnce) {
        Report(progress, kReadShare * first / height);
        const int count = std::min(rowsAtOnce, height - first);
        const std::size_t stride = static_cast<std::size_t>(width);
        if (!isReduced) {
            source.ReadRows(first, count, &data.metres[stride * static_cast<std::size_t>(first)]);
            continue;
        }
        source.ReadRows(first, count, rows.data());
        for (int row = 0; row < count; ++row) {
            const float* heights = &rows[stride * static_cast<std::size_t>(row)];
            Widen(data.sourceRange, heights, width);
            reducer.AddRow(heights);
        }
    }
}

void Flip(const GridFrame& ground, ElevationData& data)
{
    const auto row = [&](int y) { return data.metres.begin() + std::ptrdiff_t{data.width} * y; };
    if (ground.flipRows)
        for (int y = 0; y < data.height / 2; ++y)
            std::swap_ranges(row(y), row(y + 1), row(data.height - 1 - y));
    if (ground.flipColumns)
        for (int y = 0; y < data.height; ++y)
            std::reverse(row(y), row(y + 1));
}

void NoteFilled(ElevationData& data, ElevationFill fill)
{
    if (data.missing == 0)
        return;
    const double percent = 100.0 * static_cast<double>(data.missing) / static_cast<double>(data.metres.size());
    const std::string share = percent < 0.95 ? "less than 1 %" : std::to_string(std::lround(percent)) + " %";
    data.notes.push_back(std::to_string(data.missing) + " of " + std::to_string(data.metres.size()) + " cells (" +
                         share + ") had no data and were filled " +
                         (fill == ElevationFill::Lowest ? "with the lowest height." : "smoothly from their borders."));
}

CellWindow WindowIn(const RasterSource& source, const GridFrame& whole, const ElevationReadOptions& options,
                    std::vector<std::string>& notes)
{
    try {
        return ChooseCells(source.Dataset(), whole, options, notes);
    } catch (const std::invalid_argument& error) {
        source.Fail(error.what());
    }
}

ElevationData Read(const std::string& path, const ElevationReadOptions& options, const ProgressCallback& progress)
{
    RasterSource source(path, options, progress);
    ElevationData data;
    const GridFrame whole = FrameOf(source.Dataset());
    const CellWindow window = WindowIn(source, whole, options, data.notes);
    data.sourceWidth = window.columns;
    data.sourceHeight = window.rows;
    LearnGround(source.Dataset(), whole.Part(window.column, window.row, window.columns, window.rows), options.spacing,
                data);
    ChooseSize(options.resolution, options.maximumCells, data);
    PlaceGrid(source.Prepare(window, whole, data.width, data.height, !options.exactRange), data);
    ReadHeights(source, data, progress);
    data.heightUnit = source.Unit().metres;
    data.heightUnitName = source.Unit().name;
    data.noDataMark = source.NoDataMark();
    const std::vector<std::string> notes = source.Notes();
    data.notes.insert(data.notes.end(), notes.begin(), notes.end());
    Flip(whole, data);
    Report(progress, kReadShare);
    if (!FillMissing(data, options.fill))
        throw ElevationError("The file " + path + " can't be read: none of its " + std::to_string(data.sourceWidth) +
                             " x " + std::to_string(data.sourceHeight) + " cells has data.");
    NoteFilled(data, options.fill);
    Report(progress, 1.0);
    return data;
}

}  // namespace

ElevationData ReadElevationFile(const std::string& path, const ElevationReadOptions& options,
                                const ProgressCallback& progress)
{
    try {
        return Read(path, options, progress);
    } catch (const std::bad_alloc&) {
        throw ElevationError("The file " + path + " can't be read: there is not enough memory for its heights.");
    }
}

}  // namespace tessara
