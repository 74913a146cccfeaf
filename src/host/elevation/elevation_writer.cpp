#include "host/elevation/elevation_writer.h"

#include "host/elevation/elevation_error.h"
#include "host/elevation/gdal_session.h"
#include "platform/system/replacement_stream.h"

#include <cpl_vsi.h>
#include <gdal_priv.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <limits>
#include <new>
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
    if (data.georeferenced) {
        const double placed[6] = {data.originX - 0.5 * data.stepX, data.stepX, 0.0,
                                  data.originY - 0.5 * data.stepY, 0.0,        data.stepY};
        std::copy(std::begin(placed), std::end(placed), transform);
        text = data.referenceWkt;
    }
    dataset.SetGeoTransform(transform);
    OGRSpatialReference reference;
    if (!text.empty() && reference.importFromWkt(text.c_str()) == OGRERR_NONE)
        dataset.SetSpatialRef(&reference);
}

/// \return null when memory is short
GDALDatasetUniquePtr MakeDataset(const ElevationData& data, GDALDataType type)
{
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("MEM");
    if (driver == nullptr)
        return nullptr;
    GDALDatasetUniquePtr dataset(driver->Create("", data.width, data.height, 1, type, nullptr));
    if (dataset == nullptr)
        return nullptr;
    // GDAL rounds to the nearest whole number where the type needs it.
    void* heights = const_cast<float*>(data.metres.data());  // only read
    if (dataset->GetRasterBand(1)->RasterIO(GF_Write, 0, 0, data.width, data.height, heights, data.width, data.height,
                                            GDT_Float32, 0, 0, nullptr) != CE_None)
        return nullptr;
    dataset->GetRasterBand(1)->SetUnitType("m");
    SetReference(*dataset, data);
    return dataset;
}

void WriteBytes(const std::string& path, const GByte* bytes, vsi_l_offset size)
{
    try {
        ReplacementStream file(path);
        file.Stream().write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(size));
        file.PutInPlace();
    } catch (const FileError& error) {
        throw ElevationError(error.what());
    }
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
    const GDALDatasetUniquePtr dataset = MakeDataset(data, format.type);
    if (driver == nullptr || dataset == nullptr)
        failEncoding();
    GDALDatasetUniquePtr(
        driver->CreateCopy(made.c_str(), dataset.get(), FALSE, const_cast<char**>(format.options), nullptr, nullptr))
        .reset();  // closing it writes what is left
    vsi_l_offset size = 0;
    const GByte* bytes = VSIGetMemFileBuffer(made.c_str(), &size, FALSE);
    if (bytes == nullptr || size == 0 || session.HasFailed())
        failEncoding();
    WriteBytes(path, bytes, size);
}

}  // namespace tessara
