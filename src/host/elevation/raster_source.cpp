#include "host/elevation/raster_source.h"

#include "host/elevation/elevation_file.h"

#include <gdal_priv.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace tessara {
namespace {

constexpr int kLongestEdge = 1 << 20;
constexpr std::int64_t kMostCells = std::int64_t{1} << 34;
constexpr std::int64_t kMostBlockBytes = std::int64_t{1} << 30;
constexpr std::int64_t kCellsAtOnce = std::int64_t{1} << 20;
constexpr std::int64_t kMostCellsAtOnce = std::int64_t{1} << 25;

/// Values that mean no data in common practice, in files that don't say so.
constexpr double kUsualMarks[] = {-9999.0, -32768.0, -32767.0, -99999.0};

/// From here on as well: no height of anything is that far from zero, and the largest numbers of a type often serve as
/// marks.
constexpr double kLeastHugeMark = 1.0e15;

std::string Cells(std::int64_t width, std::int64_t height)
{
    return std::to_string(width) + " x " + std::to_string(height) + " cells";
}

std::string NumberText(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.8g", value);
    return text;
}

/// The unit of the heights by the file's reference system, with a note on it; metres where it doesn't tell.
HeightUnit ReferenceUnit(GDALDataset& dataset)
{
    const OGRSpatialReference* reference = dataset.GetSpatialRef();
    if (reference == nullptr)
        return {};
    const char* name = nullptr;
    if (reference->IsVertical() != FALSE) {
        const double metres = reference->GetTargetLinearUnits("VERT_CS", &name);
        if (metres == 1.0 || !(metres > 0.0) || name == nullptr)
            return {};
        return {metres, name,
                "Heights were converted to metres from the unit of the file's reference system, " + std::string(name) +
                    "."};
    }
    if (reference->IsProjected() == FALSE || reference->GetTargetLinearUnits("PROJCS", &name) == 1.0)
        return {};
    return {1.0,
            {},
            "The file's coordinates are in the unit " + std::string(name != nullptr ? name : "unknown") +
                " and it doesn't say what its heights are in; they were taken as metres."};
}

/// The cells of an overview that some of the file's cells lie in, along one axis.
/// \param size,overviewSize cells of the whole axis
std::pair<int, int> Touched(int first, int count, int size, int overviewSize)
{
    const auto scaled = [&](std::int64_t cell) { return cell * overviewSize; };
    const std::int64_t begin = scaled(first) / size;
    const std::int64_t end = (scaled(std::int64_t{first} + count) + size - 1) / size;
    return {static_cast<int>(begin), static_cast<int>(end - begin)};
}

}  // namespace

RasterSource::RasterSource(const std::string& path, const ElevationReadOptions& options,
                           const ProgressCallback& waiting)
    : file_(path, options, waiting),
      reader_(&file_.Band()),
      noData_(options.noData),
      declaresNoData_((file_.Band().GetMaskFlags() & GMF_ALL_VALID) == 0)
{
    LearnUnit(options.heightUnit);
}

void RasterSource::LearnUnit(const std::string& told)
{
    GDALRasterBand& band = file_.Band();
    if (!told.empty()) {
        const std::optional<HeightUnit> known = KnownHeightUnit(told);
        if (!known)
            file_.Fail("\"" + told + "\" is no unit of heights");
        unit_ = *known;
        unit_.note.clear();  // nothing was assumed
    } else {
        const std::string named = band.GetUnitType();
        unit_ = named.empty() ? ReferenceUnit(file_.Dataset()) : HeightUnitOf(named);
    }
    scale_ = band.GetScale() * unit_.metres;
    offset_ = band.GetOffset() * unit_.metres;
    if (!std::isfinite(scale_) || !std::isfinite(offset_) || scale_ == 0.0)
        file_.Fail("its scale of heights is not usable");
}

void RasterSource::CheckSize() const
{
    const auto [column, row, width, height] = read_;
    if (width <= 0 || height <= 0)
        file_.Fail("it holds no cells");
    if (width > kLongestEdge || height > kLongestEdge || std::int64_t{width} * height > kMostCells)
        file_.Fail("it claims to have " + Cells(width, height) + ", more than can be read");
    int blockWidth = 0;
    int blockHeight = 0;
    reader_->GetBlockSize(&blockWidth, &blockHeight);
    if (std::int64_t{blockWidth} * blockHeight >
        kMostBlockBytes / std::max(1, GDALGetDataTypeSizeBytes(reader_->GetRasterDataType())))
        file_.Fail("it is stored in pieces of " + Cells(blockWidth, blockHeight) + ", larger than can be read");
}

GridFrame RasterSource::Prepare(const CellWindow& window, const GridFrame& whole, int width, int height,
                                bool mayUseOverviews)
{
    GDALRasterBand& band = file_.Band();
    read_ = window;
    for (int i = 0; mayUseOverviews && i < band.GetOverviewCount(); ++i) {
        GDALRasterBand* overview = band.GetOverview(i);
        if (overview == nullptr || overview->GetXSize() > reader_->GetXSize() ||
            overview->GetYSize() > reader_->GetYSize())
            continue;
        const auto [column, columns] = Touched(window.column, window.columns, band.GetXSize(), overview->GetXSize());
        const auto [row, rows] = Touched(window.row, window.rows, band.GetYSize(), overview->GetYSize());
        if (columns >= width && rows >= height) {
            reader_ = overview;
            read_ = {column, row, columns, rows};
        }
    }
    CheckSize();
    const double columnsOfFile = band.GetXSize();
    const double rowsOfFile = band.GetYSize();
    return whole.Part(read_.column * columnsOfFile / reader_->GetXSize(), read_.row * rowsOfFile / reader_->GetYSize(),
                      read_.columns * columnsOfFile / reader_->GetXSize(),
                      read_.rows * rowsOfFile / reader_->GetYSize());
}

int RasterSource::RowsAtOnce() const
{
    int blockWidth = 0;
    int blockHeight = 0;
    reader_->GetBlockSize(&blockWidth, &blockHeight);
    // A row of blocks at a time, as long as it is not too much: no block is decoded twice.
    const auto block = static_cast<std::int64_t>(std::max(1, blockHeight));
    const std::int64_t most = std::max<std::int64_t>(1, kMostCellsAtOnce / ReadWidth());
    const std::int64_t blocks = std::max<std::int64_t>(1, kCellsAtOnce / ReadWidth() / block);
    return static_cast<int>(std::min({most, blocks * block, std::int64_t{ReadHeight()}}));
}

void RasterSource::ReadRows(int first, int rows, float* heights)
{
    const int width = ReadWidth();
    const std::size_t cells = static_cast<std::size_t>(width) * static_cast<std::size_t>(rows);
    const auto read = [&](GDALRasterBand* band, GDALDataType type, void* buffer) {
        return band != nullptr && band->RasterIO(GF_Read, read_.column, read_.row + first, width, rows, buffer, width,
                                                 rows, type, 0, 0, nullptr) == CE_None;
    };
    values_.resize(cells);
    mask_.assign(cells, 255);
    file_.ForgetFailures();
    bool good = read(reader_, GDT_Float64, values_.data());
    if (good && declaresNoData_)
        good = read(reader_->GetMaskBand(), GDT_Byte, mask_.data());
    if (!good || file_.HasFailed())
        file_.FailWithReport("it is damaged or cut short");
    for (std::size_t i = 0; i < cells; ++i)
        heights[i] = mask_[i] == 0 ? std::numeric_limits<float>::quiet_NaN() : HeightOf(values_[i]);
}

float RasterSource::HeightOf(double value)
{
    const double metres = value * scale_ + offset_;
    if (!std::isfinite(metres) || value == noData_ || (!declaresNoData_ && IsUndeclaredMark(value)) ||
        std::abs(metres) >= kLeastHugeMark)
        return std::numeric_limits<float>::quiet_NaN();
    return static_cast<float>(metres);
}

bool RasterSource::IsUndeclaredMark(double value)
{
    if (std::abs(value) < kLeastHugeMark &&
        std::find(std::begin(kUsualMarks), std::end(kUsualMarks), value) == std::end(kUsualMarks))
        return false;
    undeclaredMark_ = value;
    return true;
}

std::optional<double> RasterSource::NoDataMark() const
{
    int isDeclared = FALSE;
    const double declared = file_.Band().GetNoDataValue(&isDeclared);
    if (isDeclared != FALSE)
        return declared;
    return undeclaredMark_ ? undeclaredMark_ : noData_;
}

std::vector<std::string> RasterSource::Notes() const
{
    std::vector<std::string> notes = file_.Notes();
    if (!unit_.note.empty())
        notes.push_back(unit_.note);
    if (undeclaredMark_)
        notes.push_back("The file doesn't say how it marks cells without data; " + NumberText(*undeclaredMark_) +
                        " was taken as such a mark.");
    return notes;
}

}  // namespace tessara
