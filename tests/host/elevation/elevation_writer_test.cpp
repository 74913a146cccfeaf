#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_file.h"
#include "host/elevation/elevation_writer.h"
#include "host/elevation/raster_fixture.h"

#include <gdal_priv.h>
#include <gmock/gmock.h>

#include <cmath>

namespace tessara {
namespace {

class ElevationWriterTest : public RasterFixture {
protected:
    static ElevationData Grid()
    {
        ElevationData data;
        data.width = 3;
        data.height = 2;
        data.metres = {0.0f, 1.0f / 3.0f, 1918.4567f, 8848.86f, 12.0f, 3.0e-7f};
        data.spacingX = 30.0;
        data.spacingY = 20.0;
        return data;
    }

    /// Square, with a place in a system of its own.
    static ElevationData Placed(int size)
    {
        ElevationData data;
        data.width = data.height = size;
        for (int i = 0; i < size * size; ++i)
            data.metres.push_back(800.0f + 700.0f * std::sin(0.37f * static_cast<float>(i)));
        data.spacingX = data.spacingY = data.stepX = 30.0;
        data.stepY = -30.0;
        data.georeferenced = true;
        data.originY = 15360.0;
        data.referenceSystem = "Nowhere";
        data.referenceWkt = "LOCAL_CS[\"Nowhere\",UNIT[\"metre\",1]]";
        return data;
    }

    void ExpectRefused(const ElevationData& data, const std::string& path, const std::string& text) const
    {
        const std::vector<std::string> before = FolderEntries();
        try {
            WriteElevationFile(data, path);
            ADD_FAILURE() << path << " was written";
        } catch (const ElevationError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(path));
            EXPECT_THAT(error.what(), testing::HasSubstr(text));
        }
        EXPECT_EQ(FolderEntries(), before);
    }
};

TEST_F(ElevationWriterTest, WhatIsWrittenIsReadBack)
{
    const ElevationData sample = Placed(33);
    for (const char* name : {"sample.tif", "sample.TIFF", "sample.asc"}) {
        SCOPED_TRACE(name);
        WriteElevationFile(sample, Path(name));
        const ElevationData back = ReadElevationFile(Path(name));
        EXPECT_EQ(back.metres, sample.metres);
        EXPECT_EQ(back.spacingX, sample.spacingX);
        EXPECT_EQ(back.spacingY, sample.spacingY);
        EXPECT_EQ(back.originX, sample.originX);
        EXPECT_EQ(back.originY, sample.originY);
        EXPECT_EQ(back.missing, 0u);
        EXPECT_FALSE(back.geographic);
    }
    const ElevationData back = ReadElevationFile(Path("sample.tif"));
    EXPECT_EQ(back.referenceSystem, sample.referenceSystem);
    EXPECT_TRUE(back.notes.empty());
    EXPECT_THAT(FolderEntries(), testing::ElementsAre("sample.TIFF", "sample.asc", "sample.prj", "sample.tif"));
}

TEST_F(ElevationWriterTest, AGridWithoutAPlaceKeepsItsSpacing)
{
    for (const char* name : {"grid.tif", "grid.asc"}) {
        WriteElevationFile(Grid(), Path(name));
        const ElevationData back = ReadElevationFile(Path(name));
        EXPECT_EQ(back.metres, Grid().metres) << name;
        EXPECT_EQ(back.spacingX, 30.0) << name;
        EXPECT_EQ(back.spacingY, 20.0) << name;
    }
}

TEST_F(ElevationWriterTest, APictureHoldsWholeMetres)
{
    WriteElevationFile(Grid(), Path("grid.png"));
    EXPECT_THAT(ReadElevationFile(Path("grid.png")).metres, testing::ElementsAre(0, 0, 1918, 8849, 12, 0));
    ElevationData low = Grid();
    low.metres[0] = -3.0f;
    ExpectRefused(low, Path("low.png"), "from -3 to 8849 m");
}

TEST_F(ElevationWriterTest, APlaceSurvivesTurnedOrNot)
{
    const struct {
        std::vector<double> transform;
        const char* reference;
        const char* name;
        std::vector<double> written;
    } cases[] = {
        {{7.0, 0.01, 0, 46.0, 0, -0.01}, "EPSG:4326", "copy.tif", {7.0, 0.01, 0, 46.0, 0, -0.01}},
        {{7.0, 0.01, 0, 46.0, 0, -0.01}, "EPSG:4326", "copy.asc", {7.0, 0.01, 0, 46.0, 0, -0.01}},
        {{100, 10, 0, 180, 0, 10}, "EPSG:32632", "copy.asc", {100, 10, 0, 200, 0, -10}},
        // Turned against north, and mirrored as well.
        {{500, 30, 40, 900, 40, -30}, "EPSG:32632", "copy.tif", {500, 30, 40, 900, 40, -30}},
        {{500, 30, -40, 900, 40, 30}, "EPSG:32632", "copy.tif", {420, 30, 40, 960, 40, -30}},
    };
    for (const auto& [transform, reference, name, written] : cases) {
        SCOPED_TRACE(testing::PrintToString(transform) + name);
        RasterSpec spec;
        spec.width = spec.height = 2;
        spec.values = {1, 2, 3, 4};
        spec.transform = transform;
        spec.reference = reference;
        const ElevationData data = ReadElevationFile(Make("source.tif", spec));
        WriteElevationFile(data, Path(name));
        const GDALDatasetUniquePtr file(GDALDataset::Open(Path(name).c_str()));
        ASSERT_NE(file, nullptr);
        std::vector<double> found(6);
        file->GetGeoTransform(found.data());
        EXPECT_THAT(found, testing::Pointwise(testing::DoubleNear(1e-9), written));
        EXPECT_NE(file->GetSpatialRef(), nullptr);
        const ElevationData back = ReadElevationFile(Path(name));
        EXPECT_EQ(back.metres, data.metres);
        EXPECT_EQ(back.geographic, data.geographic);
        EXPECT_EQ(back.spacingX, data.spacingX);
        EXPECT_EQ(back.IsTurned(), data.IsTurned());
        if (data.IsTurned())
            ExpectRefused(data, Path("turned.asc"), "can't lie turned against north");
    }
    // The reference of an older grid doesn't stay behind.
    ElevationData unknown = Grid();
    unknown.georeferenced = true;
    WriteElevationFile(unknown, Path("copy.asc"));
    EXPECT_FALSE(std::filesystem::exists(Path("copy.prj")));
}

TEST_F(ElevationWriterTest, CellsWithoutDataStayWithoutData)
{
    const struct {
        const char* name;
        std::optional<double> told;
        std::vector<float> heights;  // the second and the last one made up
        float mark;
    } cases[] = {
        {"told.tif", -32767.0, {1, 2, 3, 4, 5, 6}, -32767.0f},
        {"told.asc", 32767.0, {1, 2, 3, 4, 5, 6}, 32767.0f},
        {"told.png", 7.0, {1, 2, 3, 4, 5, 6}, 7.0f},
        {"untold.tif", std::nullopt, {1, 2, 3, 4, 5, 6}, -9999.0f},
        {"untold.png", std::nullopt, {1, 2, 3, 4, 5, 6}, 0.0f},
        {"taken.tif", -32768.0, {-32768, 2, 3, -9999, 5, 6}, -99999.0f},
        {"taken.png", 3.0, {0, 2, 65535, 3, 5, 6}, 65534.0f},
        {"unheld.asc", 0.1, {1, 2, 3, 4, 5, 6}, -9999.0f},
    };
    for (const auto& [name, told, heights, mark] : cases) {
        SCOPED_TRACE(name);
        ElevationData data = Grid();
        data.metres = heights;
        data.holes = {0, 1, 0, 0, 0, 1};
        data.noDataMark = told;
        WriteElevationFile(data, Path(name));
        const GDALDatasetUniquePtr file(GDALDataset::Open(Path(name).c_str()));
        std::vector<float> found(6);
        ASSERT_EQ(file->GetRasterBand(1)->RasterIO(GF_Read, 0, 0, 3, 2, found.data(), 3, 2, GDT_Float32, 0, 0, nullptr),
                  CE_None);
        EXPECT_THAT(found, testing::ElementsAre(heights[0], mark, heights[2], heights[3], heights[4], mark));
        EXPECT_EQ(file->GetRasterBand(1)->GetNoDataValue(), static_cast<double>(mark));
        EXPECT_EQ(ReadElevationFile(Path(name)).holes, data.holes);
    }
}

TEST_F(ElevationWriterTest, WhatCantBeWrittenLeavesNothingBehind)
{
    ExpectRefused(Grid(), Path("grid.jpg"), "ends in .tif, .asc or .png");
    ExpectRefused(Grid(), Path("grid"), "ends in .tif, .asc or .png");
    ExpectRefused(Grid(), Path("nowhere/grid.tif"), "there is no folder");
    std::filesystem::create_directory(Path("folder.tif"));
    ExpectRefused(Grid(), Path("folder.tif"), "it is a folder");
    std::filesystem::create_symlink("/dev/full", Path("full.tif"));
    ExpectRefused(Grid(), Path("full.tif"), "No space left on device");
    ExpectRefused(ElevationData{}, Path("none.tif"), "no grid");
}

}  // namespace
}  // namespace tessara
