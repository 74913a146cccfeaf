#include "host/elevation/raster_fixture.h"

#include <gdal_priv.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <fstream>
#include <random>

namespace tessara {

namespace fs = std::filesystem;

namespace {

void Describe(GDALDataset& dataset, const RasterSpec& spec)
{
    if (!spec.transform.empty()) {
        std::vector<double> transform = spec.transform;
        dataset.SetGeoTransform(transform.data());
    }
    OGRSpatialReference reference;
    if (!spec.reference.empty() && reference.SetFromUserInput(spec.reference.c_str()) == OGRERR_NONE)
        dataset.SetSpatialRef(&reference);
    GDALRasterBand& band = *dataset.GetRasterBand(1);
    if (spec.noData)
        band.SetNoDataValue(*spec.noData);
    if (!spec.unit.empty())
        band.SetUnitType(spec.unit.c_str());
    if (spec.scale != 1.0 || spec.offset != 0.0) {
        band.SetScale(spec.scale);
        band.SetOffset(spec.offset);
    }
    if (spec.palette) {
        GDALColorTable table;
        const GDALColorEntry red{255, 0, 0, 255};
        table.SetColorEntry(0, &red);
        band.SetColorTable(&table);
    }
    if (spec.alpha)
        dataset.GetRasterBand(spec.bands)->SetColorInterpretation(GCI_AlphaBand);
}

CPLStringList ListOf(const std::vector<std::string>& options)
{
    CPLStringList list;
    for (const std::string& option : options)
        list.AddString(option.c_str());
    return list;
}

}  // namespace

RasterFixture::RasterFixture()
{
    GDALAllRegister();
    folder_ = fs::temp_directory_path() / ("tessara-elevation-" + std::to_string(std::random_device{}()));
    fs::create_directory(folder_);
}

RasterFixture::~RasterFixture()
{
    fs::remove_all(folder_);
}

std::vector<std::string> RasterFixture::FolderEntries() const
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string RasterFixture::Make(const std::string& name, const RasterSpec& spec) const
{
    GDALDriverManager& drivers = *GetGDALDriverManager();
    const GDALDatasetUniquePtr memory(drivers.GetDriverByName("MEM")->Create(
        "", spec.width, spec.height, spec.bands, GDALGetDataTypeByName(spec.type.c_str()), nullptr));
    std::vector<double> values = spec.values;
    for (int band = 1; band <= spec.bands; ++band) {
        EXPECT_EQ(memory->GetRasterBand(band)->RasterIO(GF_Write, 0, 0, spec.width, spec.height, values.data(),
                                                        spec.width, spec.height, GDT_Float64, 0, 0, nullptr),
                  CE_None);
        for (double& value : values)
            value += spec.bandStep;
    }
    Describe(*memory, spec);
    const std::string path = Path(name);
    fs::remove(path);  // GDAL would look into it first
    const GDALDatasetUniquePtr file(
        drivers.GetDriverByName(spec.driver.c_str())
            ->CreateCopy(path.c_str(), memory.get(), FALSE, ListOf(spec.options).List(), nullptr, nullptr));
    EXPECT_NE(file, nullptr) << name;
    return path;
}

std::string RasterFixture::MakeHollow(const std::string& name, int size, const std::vector<std::string>& options) const
{
    CPLStringList list = ListOf(options);
    list.AddString("SPARSE_OK=TRUE");
    const std::string path = Path(name);
    const GDALDatasetUniquePtr file(
        GetGDALDriverManager()->GetDriverByName("GTiff")->Create(path.c_str(), size, size, 1, GDT_Byte, list.List()));
    EXPECT_NE(file, nullptr) << name;
    return path;
}

std::string RasterFixture::MakeText(const std::string& name, const std::string& text) const
{
    std::ofstream(Path(name), std::ios::binary) << text;
    return Path(name);
}

void RasterFixture::Truncate(const std::string& path, double share)
{
    fs::resize_file(path, static_cast<std::uintmax_t>(static_cast<double>(fs::file_size(path)) * share));
}

std::vector<double> GridOf(int width, int height, const std::function<double(int x, int y)>& value)
{
    std::vector<double> values;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            values.push_back(value(x, y));
    return values;
}

testing::AssertionResult HasNote(const ElevationData& data, const std::string& text)
{
    std::string all;
    for (const std::string& note : data.notes) {
        if (note.find(text) != std::string::npos)
            return testing::AssertionSuccess();
        all += "\n  " + note;
    }
    return testing::AssertionFailure() << "no note holds \"" << text << "\":" << all;
}

}  // namespace tessara
