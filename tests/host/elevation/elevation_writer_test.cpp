#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_file.h"
#include "host/elevation/elevation_writer.h"
#include "host/elevation/raster_fixture.h"

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
    EXPECT_EQ(FolderEntries().size(), 3u);
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

TEST_F(ElevationWriterTest, AReferenceInDegreesSurvives)
{
    RasterSpec spec;
    spec.width = spec.height = 2;
    spec.values = {1, 2, 3, 4};
    spec.transform = {7.0, 0.01, 0, 46.0, 0, -0.01};
    spec.reference = "EPSG:4326";
    const ElevationData data = ReadElevationFile(Make("source.tif", spec));
    WriteElevationFile(data, Path("copy.tif"));
    const ElevationData back = ReadElevationFile(Path("copy.tif"));
    EXPECT_TRUE(back.geographic);
    EXPECT_EQ(back.referenceSystem, "WGS 84");
    EXPECT_EQ(back.spacingX, data.spacingX);
    EXPECT_EQ(back.originY, data.originY);
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
