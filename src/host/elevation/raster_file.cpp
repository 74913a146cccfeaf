#include "host/elevation/raster_file.h"

#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_file.h"

#include <gdal_priv.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace tessara {
namespace {

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

/// One of several grids that a file holds.
struct Grid {
    std::string name;      ///< as users call it
    std::string notation;  ///< as GDAL opens it
    std::string shape;     ///< size and type, as GDAL describes them
};

/// The last part of a grid's name in GDAL's notation: NETCDF:"file.nc":height, HDF5:"file.h5"://group/height.
std::string GridName(const std::string& notation)
{
    const std::size_t quote = notation.rfind('"');
    const std::size_t colon = notation.find(':', quote == std::string::npos ? notation.rfind(':') : quote);
    if (colon == std::string::npos || colon + 1 == notation.size())
        return notation;
    const std::size_t begin = notation.find_first_not_of('/', colon + 1);
    return begin == std::string::npos ? notation : notation.substr(begin);
}

std::vector<Grid> GridsOf(GDALDataset& dataset)
{
    std::vector<Grid> grids;
    char** items = dataset.GetMetadata("SUBDATASETS");
    for (int number = 1;; ++number) {
        const std::string key = "SUBDATASET_" + std::to_string(number);
        const char* notation = CSLFetchNameValue(items, (key + "_NAME").c_str());
        if (notation == nullptr)
            return grids;
        const char* told = CSLFetchNameValue(items, (key + "_DESC").c_str());
        const std::string_view description = told != nullptr ? told : "";
        const std::size_t end = description.find(']');
        grids.push_back({GridName(notation), notation,
                         description.starts_with("[") && end != std::string_view::npos
                             ? std::string(description.substr(1, end - 1))
                             : std::string()});
    }
}

/// "a (3x4), b (5x6)".
std::string ListOf(const std::vector<Grid>& grids)
{
    constexpr std::size_t kMost = 20;
    std::string list;
    for (std::size_t i = 0; i < std::min(grids.size(), kMost); ++i)
        list += (i > 0 ? ", " : "") + grids[i].name + (grids[i].shape.empty() ? "" : " (" + grids[i].shape + ")");
    return grids.size() > kMost ? list + " and " + std::to_string(grids.size() - kMost) + " more" : list;
}

/// \return null where there is none of that name, or where it ends the names of several
const Grid* FindGrid(const std::vector<Grid>& grids, const std::string& name)
{
    const Grid* found = nullptr;
    for (const Grid& grid : grids) {
        if (grid.name == name || grid.notation == name)
            return &grid;
        if (grid.name.ends_with("/" + name)) {
            if (found != nullptr)
                return nullptr;
            found = &grid;
        }
    }
    return found;
}

}  // namespace

void RasterFile::CloseDataset::operator()(GDALDataset* dataset) const
{
    GDALClose(dataset);
}

RasterFile::RasterFile(const std::string& path, const ElevationReadOptions& options, const ProgressCallback& waiting)
    : path_(path), input_(path, options.patience, waiting), name_(input_.Name()), session_(input_.IsOnNetwork())
{
    Open();
    OpenGrid(options.grid);
    ChooseBand(options.band);
}

RasterFile::~RasterFile() = default;

void RasterFile::Fail(const std::string& reason) const
{
    throw ElevationError("The file " + path_ + " can't be read: " + reason + ".");
}

void RasterFile::FailWithReport(const std::string& reason) const
{
    Fail(session_.Reason(reason, name_));
}

void RasterFile::Open()
{
    const auto open = [&](const char* const* options) {
        dataset_.reset(GDALDataset::Open(name_.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY, nullptr, options, nullptr));
    };
    open(nullptr);
    if (dataset_ != nullptr && dataset_->GetRasterCount() > 0 && GuessesType(*dataset_)) {
        const char* const kAsDouble[] = {"DATATYPE=Float64", nullptr};
        open(kAsDouble);
    }
    if (dataset_ != nullptr)
        return;
    std::error_code error;
    if (std::filesystem::is_directory(name_, error))
        Fail("it is a folder that holds no elevations");
    VSIStatBufL status{};
    if (name_.starts_with("/vsi") && VSIStatExL(name_.c_str(), &status, VSI_STAT_EXISTS_FLAG) != 0)
        Fail(input_.IsOnNetwork() ? "nothing could be fetched from there" : "there is no such file");
    FailWithReport(session_.HasFailed() ? "it is not an elevation file, or a damaged one"
                                        : "it is not in a format that holds elevations");
}

void RasterFile::OpenGrid(const std::string& grid)
{
    const std::vector<Grid> grids = GridsOf(*dataset_);
    if (grid.empty() && dataset_->GetRasterCount() > 0)
        return;
    if (grids.empty())
        Fail(grid.empty() ? "it holds no grid" : "it holds one grid only, without a name");
    if (grid.empty() && grids.size() > 1)
        Fail("it holds several grids, of which one must be named: " + ListOf(grids));
    const Grid* chosen = grid.empty() ? &grids.front() : FindGrid(grids, grid);
    if (chosen == nullptr)
        Fail("it has no grid \"" + grid + "\"; it holds " + ListOf(grids));
    name_ = chosen->notation;
    Open();
    if (dataset_->GetRasterCount() == 0)
        Fail("\"" + chosen->name + "\" is no grid");
}

void RasterFile::ChooseBand(int number)
{
    const int bands = dataset_->GetRasterCount();
    if (number > bands)
        Fail("it has " + std::to_string(bands) + (bands == 1 ? " band" : " bands") + ", not " + std::to_string(number));
    band_ = dataset_->GetRasterBand(std::max(number, 1));
    const GDALDataType type = band_->GetRasterDataType();
    if (band_->GetColorTable() != nullptr || band_->GetColorInterpretation() == GCI_PaletteIndex)
        Fail("it is a picture with a colour table, not an elevation file");
    if (number < 1 && bands >= 3 && AreColours(*band_))
        Fail("it is a colour picture with " + std::to_string(bands) + " channels, not an elevation file");
    if (GDALDataTypeIsComplex(type) != FALSE)
        Fail("its values are complex numbers, not elevations");
    const bool hasAlpha = bands == 2 && dataset_->GetRasterBand(2)->GetColorInterpretation() == GCI_AlphaBand;
    if (number < 1 && bands > 1 && !hasAlpha)
        notes_.push_back("Only the first of the file's " + std::to_string(bands) + " bands was read.");
    if (type == GDT_Byte)
        notes_.push_back("The file tells only 256 heights apart, so slopes look stepped.");
}

}  // namespace tessara
