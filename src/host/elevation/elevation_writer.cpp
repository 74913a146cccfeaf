#include "host/elevation/elevation_writer.h"

#include "host/elevation/elevation_error.h"
#include "host/elevation/gdal_session.h"
#include "host/elevation/no_data_mark.h"
#include "platform/system/replacement_stream.h"

#include <cpl_vsi.h>
#include <gdal_priv.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

namespace tessara {
namespace {

struct Format {
    const char* ending;
    const char* driver;
    GDALDataType type;
    const char* options[3];
};

constexpr Format kFormats[] = {
    {".tif", "GTiff", GDT_Float32, {"COMPRESS=DEFLATE", "PREDICTOR=3", nullptr}},
    {".tiff", "GTiff", GDT_Float32, {"COMPRESS=DEFLATE", "PREDICTOR=3", nullptr}},
    {".asc", "AAIGrid", GDT_Float32, {"SIGNIFICANT_DIGITS=9", nullptr}},
    {".png", "PNG", GDT_UInt16, {nullptr}},
};

/// Of a grid that lies nowhere in particular.
constexpr const char* kLocalReference = "LOCAL_CS[\"Local metres\",UNIT[\"metre\",1]]";

[[noreturn]] void Fail(const std::string& path, const std::string& reason)
{
    throw ElevationError("The file " + path + " can't be written: " + reason + ".");
}

const Format& FormatOf(const std::string& path)
{
    if (path == kStandardOutput)
        return kFormats[0];
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    for (const Format& format : kFormats)
        if (ending == format.ending)
            return format;
    Fail(path, "the name of an elevation file ends in .tif, .asc or .png");
}

/// A folder in memory for the files that a driver makes, gone with the object.
class MemoryFolder {
public:
    MemoryFolder()
    {
        static std::atomic<unsigned> count{0};
        name_ = "/vsimem/tessara-elevation-" + std::to_string(++count);
    }
    ~MemoryFolder() { VSIRmdirRecursive(name_.c_str()); }
    MemoryFolder(const MemoryFolder&) = delete;
    MemoryFolder& operator=(const MemoryFolder&) = delete;
    std::string File(const std::string& name) const { return name_ + "/" + name; }

private:
    std::string name_;
};

void SetReference(GDALDataset& dataset, const ElevationData& data)
{
    double transform[6] = {0.0, data.spacingX, 0.0, data.spacingY * data.height, 0.0, -data.spacingY};
    std::string text = kLocalReference;
    if (data.georeferenced || data.IsTurned()) {
        const double placed[6] = {data.originX - 0.5 * (data.stepX + data.turnX), data.stepX, data.turnX,
                                  data.originY - 0.5 * (data.turnY + data.stepY), data.turnY, data.stepY};
        std::copy(std::begin(placed), std::end(placed), transform);
        text = data.referenceWkt;
    }
    dataset.SetGeoTransform(transform);
    OGRSpatialReference reference;
    if (!text.empty() && reference.importFromWkt(text.c_str()) == OGRERR_NONE)
        dataset.SetSpatialRef(&reference);
}

/// \param mark for cells without data
bool WriteHeights(GDALRasterBand& band, const ElevationData& data, std::optional<float> mark)
{
    // GDAL rounds to the nearest whole number where the type needs it.
    const auto write = [&](int y, int rows, const float* heights) {
        return band.RasterIO(GF_Write, 0, y, data.width, rows, const_cast<float*>(heights), data.width, rows,
                             GDT_Float32, 0, 0, nullptr) == CE_None;  // only read
    };
    if (!mark)
        return write(0, data.height, data.metres.data());
    std::vector<float> row(static_cast<std::size_t>(data.width));
    for (int y = 0; y < data.height; ++y) {
        const std::size_t first = static_cast<std::size_t>(y) * row.size();
        for (std::size_t x = 0; x < row.size(); ++x)
            row[x] = data.HasData(first + x) ? data.metres[first + x] : *mark;
        if (!write(y, 1, row.data()))
            return false;
    }
    return band.SetNoDataValue(static_cast<double>(*mark)) == CE_None;
}

/// \return null when memory is short
GDALDatasetUniquePtr MakeDataset(const ElevationData& data, GDALDataType type, std::optional<float> mark)
{
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("MEM");
    if (driver == nullptr)
        return nullptr;
    GDALDatasetUniquePtr dataset(driver->Create("", data.width, data.height, 1, type, nullptr));
    if (dataset == nullptr || !WriteHeights(*dataset->GetRasterBand(1), data, mark))
        return nullptr;
    dataset->GetRasterBand(1)->SetUnitType("m");
    SetReference(*dataset, data);
    return dataset;
}

/// What cells without data get in the file, where there are any.
std::optional<float> MarkFor(const ElevationData& data, const Format& format, const std::string& path)
{
    if (std::find(data.holes.begin(), data.holes.end(), 1) == data.holes.end())
        return std::nullopt;
    const std::optional<float> mark = FreeNoDataMark(data, format.type == GDT_UInt16);
    if (!mark)
        Fail(path, "cells without data can't be marked: every number of the format is the height of a cell");
    return mark;
}

void CheckHeights(const ElevationData& data, const Format& format, const std::string& path)
{
    if (data.width <= 0 || data.height <= 0 ||
        data.metres.size() != static_cast<std::size_t>(data.width) * static_cast<std::size_t>(data.height))
        Fail(path, "there is no grid to write");
    const auto [lowest, highest] = std::minmax_element(data.metres.begin(), data.metres.end());
    if (format.type == GDT_UInt16 && (*lowest < 0.0f || *highest > 65535.0f))
        Fail(path, "a PNG file holds heights from 0 to 65535 m only, and these go from " +
                       std::to_string(std::lround(*lowest)) + " to " + std::to_string(std::lround(*highest)) + " m");
    if (data.IsTurned() && std::string_view(format.driver) == "AAIGrid")
        Fail(path, "an ASCII grid can't lie turned against north, and this grid does; a .tif file can");
}

/// A file that a driver has made in memory. \return empty where it made none
std::span<const GByte> MadeFile(const std::string& name)
{
    vsi_l_offset size = 0;
    const GByte* bytes = VSIGetMemFileBuffer(name.c_str(), &size, FALSE);
    return bytes != nullptr ? std::span(bytes, static_cast<std::size_t>(size)) : std::span<const GByte>();
}

/// Writes an elevation file, and beside an ASCII grid its reference system; one that doesn't hold any more goes.
void WriteFiles(const std::string& path, std::span<const GByte> heights, std::span<const GByte> reference)
{
    const auto fill = [](ReplacementStream& file, std::span<const GByte> bytes) {
        file.Stream().write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    };
    const std::filesystem::path beside = std::filesystem::path(path).replace_extension(".prj");
    try {
        ReplacementStream file(path);
        fill(file, heights);
        std::optional<ReplacementStream> second;
        if (!reference.empty())
            fill(second.emplace(beside.string(), ReplacementFile::Kind::File), reference);
        file.PutInPlace();
        if (second)
            second->PutInPlace();
    } catch (const FileError& error) {
        throw ElevationError(error.what());
    }
    std::error_code error;
    if (reference.empty() && std::string_view(FormatOf(path).ending) == ".asc" &&
        std::filesystem::is_regular_file(beside, error))
        std::filesystem::remove(beside, error);
}

}  // namespace

void WriteElevationFile(const ElevationData& data, const std::string& path)
{
    const Format& format = FormatOf(path);
    CheckHeights(data, format, path);
    GdalSession session;
    const MemoryFolder folder;
    const std::string made = folder.File(std::string("heights") + format.ending);
    const auto failEncoding = [&] { Fail(path, session.Reason("its contents can't be made", made)); };
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(format.driver);
    const GDALDatasetUniquePtr dataset = MakeDataset(data, format.type, MarkFor(data, format, path));
    if (driver == nullptr || dataset == nullptr)
        failEncoding();
    GDALDatasetUniquePtr(
        driver->CreateCopy(made.c_str(), dataset.get(), FALSE, const_cast<char**>(format.options), nullptr, nullptr))
        .reset();  // closing it writes what is left
    const std::span<const GByte> bytes = MadeFile(made);
    if (bytes.empty() || session.HasFailed())
        failEncoding();
    WriteFiles(path, bytes, MadeFile(folder.File("heights.prj")));
}

}  // namespace tessara
