#include "host/elevation/elevation_error.h"
#include "host/elevation/elevation_file.h"
#include "host/elevation/raster_fixture.h"

#include <gdal_priv.h>
#include <gmock/gmock.h>

namespace tessara {
namespace {

/// Files of 8 columns by 6 rows of 10 m, whose heights say their place: 100 times the row from the north, and the
/// column from the west.
class GridChoiceTest : public RasterFixture {
protected:
    std::string MakeGrid(const char* reference = "EPSG:32632", bool isFlipped = false) const
    {
        RasterSpec spec;
        spec.width = 8;
        spec.height = 6;
        spec.values = GridOf(8, 6, [&](int x, int y) { return isFlipped ? (5 - y) * 100 + 7 - x : y * 100 + x; });
        spec.reference = reference;
        spec.transform = {500000, 10, 0, 5000060, 0, -10};
        if (isFlipped)
            spec.transform = {500080, -10, 0, 5000000, 0, 10};
        return Make("grid.tif", spec);
    }
};

TEST_F(GridChoiceTest, AWindowOrAnExtentTakesItsCellsAndKeepsThemInTheirPlace)
{
    const struct {
        std::optional<CellWindow> window;
        std::optional<MapExtent> extent;
        int column;
        int row;
        int width;
        int height;
        bool isCut;
    } cases[] = {
        {CellWindow{2, 1, 3, 2}, {}, 2, 1, 3, 2, false},
        {CellWindow{5, 4, 9, 2}, {}, 5, 4, 3, 2, true},
        // Edges of cells, and all cells that are touched.
        {{}, MapExtent{500020, 5000030, 500050, 5000050}, 2, 1, 3, 2, false},
        {{}, MapExtent{500025, 5000031, 500041, 5000041}, 2, 1, 3, 2, false},
        {{}, MapExtent{499000, 5000000, 500020, 5000020}, 0, 4, 2, 2, true},
        // Degrees of the middle of the cell in column 3 and row 2, by gdaltransform.
        {{}, MapExtent{9.0004452, 45.1537922, 9.0004453, 45.1537923}, 3, 2, 1, 1, false},
    };
    for (const bool isFlipped : {false, true}) {
        const std::string path = MakeGrid("EPSG:32632", isFlipped);
        for (const auto& test : cases) {
            SCOPED_TRACE(testing::Message() << test.column << ' ' << test.row << ' ' << isFlipped);
            ElevationReadOptions options;
            options.window = test.window;
            options.extent = test.extent;
            const ElevationData data = ReadElevationFile(path, options);
            ASSERT_EQ(data.width, test.width);
            ASSERT_EQ(data.height, test.height);
            EXPECT_EQ(data.metres.front(), static_cast<float>(test.row * 100 + test.column));
            EXPECT_EQ(data.metres.back(),
                      static_cast<float>((test.row + test.height - 1) * 100 + test.column + test.width - 1));
            EXPECT_EQ(data.originX, 500005.0 + 10 * test.column);
            EXPECT_EQ(data.originY, 5000055.0 - 10 * test.row);
            EXPECT_EQ(bool(HasNote(data, "past the file's edge")), test.isCut);
            EXPECT_EQ(data.sourceWidth, test.width);
        }
    }
}

TEST_F(GridChoiceTest, AResolutionTakesTheMeansOfWhatItCovers)
{
    ElevationReadOptions options;
    options.resolution = 20.0;
    options.window = CellWindow{2, 2, 4, 4};
    const ElevationData data = ReadElevationFile(MakeGrid(), options);
    EXPECT_THAT(data.metres, testing::ElementsAre(252.5f, 254.5f, 452.5f, 454.5f));
    EXPECT_EQ(data.spacingX, 20.0);
    EXPECT_EQ(data.originX, 500030.0);
    EXPECT_EQ(data.originY, 5000030.0);
    options.resolution = 5.0;
    const ElevationData fine = ReadElevationFile(MakeGrid(), options);
    EXPECT_EQ(fine.width, 4);
    EXPECT_TRUE(HasNote(fine, "nothing finer"));
}

TEST_F(GridChoiceTest, AnOverviewGivesItsOwnCellsInTheirTruePlace)
{
    RasterSpec spec;
    spec.width = spec.height = 64;
    spec.values = GridOf(64, 64, [](int x, int y) { return y * 100.0 + x; });
    spec.reference = "EPSG:32632";
    spec.transform = {1000, 10, 0, 2000, 0, -10};
    const std::string path = Make("pyramid.tif", spec);
    {
        const GDALDatasetUniquePtr file(GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        int level = 4;
        ASSERT_EQ(file->BuildOverviews("AVERAGE", 1, &level, 0, nullptr, nullptr, nullptr), CE_None);
    }
    ElevationReadOptions options;
    options.resolution = 40.0;
    options.window = CellWindow{6, 10, 20, 24};  // from within one of the overview's cells into another
    const ElevationData data = ReadElevationFile(path, options);
    EXPECT_EQ(data.width, 5);
    EXPECT_EQ(data.height, 6);
    // Heights rise evenly, so each is that of the middle of what it covers, to a part of the file's cells.
    for (int y = 0; y < data.height; ++y) {
        for (int x = 0; x < data.width; ++x) {
            const double column = (data.originX + x * data.stepX - 1000) / 10 - 0.5;
            const double row = (2000 - data.originY - y * data.stepY) / 10 - 0.5;
            EXPECT_NEAR(data.metres[static_cast<std::size_t>(y * data.width + x)], row * 100 + column, 30.0);
        }
    }
}

TEST_F(GridChoiceTest, WhatIsNotThereIsSaidWithWhatIs)
{
    const std::string path = MakeGrid();
    ElevationReadOptions options;
    const auto reason = [&](const std::string& file) {
        try {
            ReadElevationFile(file, options);
        } catch (const ElevationError& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    options.window = CellWindow{8, 0, 2, 2};
    EXPECT_THAT(reason(path), testing::HasSubstr("begins outside of its 8 columns and 6 rows"));
    options.window.reset();
    options.extent = MapExtent{100, 45, 101, 46};
    EXPECT_THAT(reason(path), testing::HasSubstr("the extent 100,45,101,46 lies outside of it; it covers "
                                                 "500000,5000000,500080,5000060"));
    RasterSpec turned;
    turned.width = turned.height = 2;
    turned.values = {1, 2, 3, 4};
    turned.transform = {0, 30, 40, 0, 40, -30};
    EXPECT_THAT(reason(Make("turned.tif", turned)), testing::HasSubstr("turned against north"));
}

/// Files that count longitudes from 0 to 360 have the western half of the world in the east.
TEST_F(GridChoiceTest, LongitudesMeetTheFileATurnFurther)
{
    RasterSpec spec;
    spec.width = 360;
    spec.height = 180;
    spec.values = GridOf(360, 180, [](int x, int) { return x; });
    spec.reference = "EPSG:4326";
    spec.transform = {0, 1, 0, 90, 0, -1};
    ElevationReadOptions options;
    options.extent = MapExtent{-70, -30, -60, -20};
    const ElevationData data = ReadElevationFile(Make("world.tif", spec), options);
    EXPECT_EQ(data.metres.front(), 290.0f);
    EXPECT_EQ(data.width, 10);
}

}  // namespace
}  // namespace tessara
