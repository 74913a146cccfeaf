#include "host/elevation/raster_source.h"

#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_path.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string_view>
#include <system_error>

namespace tessara {
namespace {

constexpr int kLongestEdge = 1 << 20;
constexpr std::int64_t kMostCells = std::int64_t{1} << 34;
constexpr std::int64_t kMostBlockBytes = std::int64_t{1} << 30;
constexpr std::int64_t kCellsAtOnce = std::int64_t{1} << 20;
constexpr std::int64_t kMostCellsAtOnce = std::int64_t{1} << 25;

/// Further from zero than any height: 1000 km.
constexpr double kImpossibleHeight = 1.0e6;

/// Values that mean no data in common practice, in files that don't say so.
constexpr double kUsualMarks[] = {-9999.0, -32768.0, -32767.0, -99999.0};

std::string Cells(std::int64_t width, std::int64_t height)
{
    return std::to_string(width) + " x " + std::to_string(height) + " cells";
}

/// Whether three or more bands are the channels of a picture rather than grids of their own.
bool AreColours(GDALRasterBand& first)
{
    const GDALDataType type = first.GetRasterDataType();
    const GDALColorInterp meaning = first.GetColorInterpretation();
    return type == GDT_Byte || type == GDT_UInt16 || (meaning != GCI_Undefined && meaning != GCI_GrayIndex);
}

/// Whether the driver tells whole numbers from others by the first lines of the text only.
bool GuessesType(GDALDataset& dataset)
{
    const std::string_view driver = dataset.GetDriverName();
    return (driver == "AAIGrid" || driver == "GRASSASCIIGrid") &&
           dataset.GetRasterBand(1)->GetRasterDataType() == GDT_Int32;
}

}  // namespace

void RasterSource::CloseDataset::operator()(GDALDataset* dataset) const
{
    GDALClose(dataset);
}

RasterSource::RasterSource(const std::string& path, std::optional<double> noData) : path_(path), noData_(noData)
{
    name_ = CheckedElevationPath(path);
    Open();
    if (dataset_->GetRasterCount() == 0)
        OpenFirstPart();
    ChooseBand();
    LearnUnit();
}

RasterSource::~RasterSource() = default;

void RasterSource::Fail(const std::string& reason) const
{
    throw ElevationError("The file " + path_ + " can't be read: " + reason + ".");
}

void RasterSource::Open()
{
    const auto open = [&](const char* const* options) {
        dataset_.reset(GDALDataset::Open(name_.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY, nullptr, options, nullptr));
    };
    open(nullptr);
    if (dataset_ != nullptr && GuessesType(*dataset_)) {
        const char* const kAsDouble[] = {"DATATYPE=Float64", nullptr};
        open(kAsDouble);
    }
    if (dataset_ != nullptr)
        return;
    std::error_code error;
    if (std::filesystem::is_directory(name_, error))
        Fail("it is a folder that holds no elevations");
    Fail(session_.Reason(session_.HasFailed() ? "it is not an elevation file, or a damaged one"
                                              : "it is not in a format that holds elevations",
                         name_));
}

void RasterSource::OpenFirstPart()
{
    const char* part = dataset_->GetMetadataItem("SUBDATASET_1_NAME", "SUBDATASETS");
    if (part == nullptr)
        Fail("it holds no grid");
    name_ = part;
    Open();
    if (dataset_->GetRasterCount() == 0)
        Fail("it holds no grid");
    notes_.push_back("The file holds several grids; the first one was read.");
}

void RasterSource::ChooseBand()
{
    const int bands = dataset_->GetRasterCount();
    band_ = reader_ = dataset_->GetRasterBand(1);
    const GDALDataType type = band_->GetRasterDataType();
    if (band_->GetColorTable() != nullptr || band_->GetColorInterpretation() == GCI_PaletteIndex)
        Fail("it is a picture with a colour table, not an elevation file");
    if (bands >= 3 && AreColours(*band_))
        Fail("it is a colour picture with " + std::to_string(bands) + " channels, not an elevation file");
    if (GDALDataTypeIsComplex(type) != FALSE)
        Fail("its values are complex numbers, not elevations");
    const bool hasAlpha = bands == 2 && dataset_->GetRasterBand(2)->GetColorInterpretation() == GCI_AlphaBand;
    if (bands > 1 && !hasAlpha)
        notes_.push_back("Only the first of the file's " + std::to_string(bands) + " channels was read.");
    if (type == GDT_Byte)
        notes_.push_back("The file tells only 256 heights apart, so slopes look stepped.");
    declaresNoData_ = (band_->GetMaskFlags() & GMF_ALL_VALID) == 0;
}

void RasterSource::LearnUnit()
{
    unit_ = HeightUnitOf(band_->GetUnitType());
    if (!unit_.note.empty())
        notes_.push_back(unit_.note);
    scale_ = band_->GetScale() * unit_.metres;
    offset_ = band_->GetOffset() * unit_.metres;
    if (!std::isfinite(scale_) || !std::isfinite(offset_) || scale_ == 0.0)
        Fail("its scale of heights is not usable");
}

void RasterSource::CheckSize() const
{
    const int width = reader_->GetXSize();
    const int height = reader_->GetYSize();
    if (width <= 0 || height <= 0)
        Fail("it holds no cells");
    if (width > kLongestEdge || height > kLongestEdge || std::int64_t{width} * height > kMostCells)
        Fail("it claims to have " + Cells(width, height) + ", more than can be read");
    int blockWidth = 0;
    int blockHeight = 0;
    reader_->GetBlockSize(&blockWidth, &blockHeight);
    if (std::int64_t{blockWidth} * blockHeight >
        kMostBlockBytes / std::max(1, GDALGetDataTypeSizeBytes(reader_->GetRasterDataType())))
        Fail("it is stored in pieces of " + Cells(blockWidth, blockHeight) + ", larger than can be read");
}

void RasterSource::Prepare(int width, int height)
{
    for (int i = 0; i < band_->GetOverviewCount(); ++i) {
        GDALRasterBand* overview = band_->GetOverview(i);
        if (overview != nullptr && overview->GetXSize() >= width && overview->GetYSize() >= height &&
            overview->GetXSize() <= ReadWidth() && overview->GetYSize() <= ReadHeight())
            reader_ = overview;
    }
    CheckSize();
}

int RasterSource::Width() const
{
    return band_->GetXSize();
}

int RasterSource::Height() const
{
    return band_->GetYSize();
}

int RasterSource::ReadWidth() const
{
    return reader_->GetXSize();
}

int RasterSource::ReadHeight() const
{
    return reader_->GetYSize();
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
        return band != nullptr &&
               band->RasterIO(GF_Read, 0, first, width, rows, buffer, width, rows, type, 0, 0, nullptr) == CE_None;
    };
    values_.resize(cells);
    mask_.assign(cells, 255);
    session_.ForgetFailures();
    bool good = read(reader_, GDT_Float64, values_.data());
    if (good && declaresNoData_)
        good = read(reader_->GetMaskBand(), GDT_Byte, mask_.data());
    if (!good || session_.HasFailed())
        Fail(session_.Reason("it is damaged or cut short", name_));
    for (std::size_t i = 0; i < cells; ++i)
        heights[i] = mask_[i] == 0 ? std::numeric_limits<float>::quiet_NaN() : HeightOf(values_[i]);
}

float RasterSource::HeightOf(double value)
{
    const double metres = value * scale_ + offset_;
    if (!(std::abs(metres) <= kImpossibleHeight) || value == noData_ || (!declaresNoData_ && IsUndeclaredMark(value)))
        return std::numeric_limits<float>::quiet_NaN();
    return static_cast<float>(metres);
}

bool RasterSource::IsUndeclaredMark(double value)
{
    if (std::find(std::begin(kUsualMarks), std::end(kUsualMarks), value) == std::end(kUsualMarks))
        return false;
    undeclaredMark_ = value;
    return true;
}

std::optional<double> RasterSource::NoDataMark() const
{
    int isDeclared = FALSE;
    const double declared = band_->GetNoDataValue(&isDeclared);
    if (isDeclared != FALSE)
        return declared;
    return undeclaredMark_ ? undeclaredMark_ : noData_;
}

std::vector<std::string> RasterSource::Notes() const
{
    std::vector<std::string> notes = notes_;
    if (undeclaredMark_)
        notes.push_back("The file doesn't say how it marks cells without data; " +
                        std::to_string(static_cast<int>(*undeclaredMark_)) + " was taken as such a mark.");
    return notes;
}

}  // namespace tessara
