#include "host/elevation/elevation_file.h"
#include "host/elevation/raster_fixture.h"

#include <gmock/gmock.h>

namespace tessara {
namespace {

class GroundReferenceTest : public RasterFixture {
protected:
    /// Reads a grid of 4 columns by 2 rows, whose heights count up in the order of the file.
    ElevationData Read(const std::vector<double>& transform, const std::string& reference, double spacing = 0.0) const
    {
        RasterSpec spec;
        spec.width = 4;
        spec.height = 2;
        spec.values = {1, 2, 3, 4, 5, 6, 7, 8};
        spec.transform = transform;
        spec.reference = reference;
        ElevationReadOptions options;
        options.spacing = spacing;
        return ReadElevationFile(Make("placed.tif", spec), options);
    }
};

TEST_F(GroundReferenceTest, SpacingComesInMetresOnTheGround)
{
    const struct {
        std::vector<double> transform;
        const char* reference;
        double x;
        double y;
        bool geographic;
    } cases[] = {
        {{500000, 30, 0, 5000000, 0, -20}, "EPSG:32632", 30.0, 20.0, false},
        // Feet of a state's plane, alone and with a height system in feet.
        {{1000000, 100, 0, 500000, 0, -100}, "EPSG:2286", 30.48006, 30.48006, false},
        {{1000000, 100, 0, 500000, 0, -100}, "EPSG:2286+6360", 30.48006, 30.48006, false},
        // A degree at the equator, at 60 degrees north, and on a sphere (of the Moon, 1737.4 km).
        {{10, 1, 0, 1, 0, -1}, "EPSG:4326", 111319.491, 110574.276, true},
        {{10, 0.001, 0, 60.001, 0, -0.001}, "EPSG:4326", 55.80028, 111.41225, true},
        {{10, 1, 0, 1, 0, -1}, "+proj=longlat +R=1737400", 30323.35, 30323.35, true},
        // Mercator stretches everything at 60 degrees north about twice.
        {{0, 1000, 0, 8400000, 0, -1000}, "EPSG:3857", 500.0, 500.0, false},
        {{0, 2, 0, 10, 0, -2}, "LOCAL_CS[\"Site\",UNIT[\"foot\",0.3048]]", 0.6096, 0.6096, false},
    };
    for (const auto& [transform, reference, x, y, geographic] : cases) {
        SCOPED_TRACE(reference);
        const ElevationData data = Read(transform, reference);
        EXPECT_NEAR(data.spacingX / x, 1.0, 0.006);
        EXPECT_NEAR(data.spacingY / y, 1.0, 0.006);
        if (std::string(reference) != "EPSG:3857") {
            EXPECT_NEAR(data.spacingX, x, 1e-5 * x);
            EXPECT_NEAR(data.spacingY, y, 1e-3 * y);
        }
        EXPECT_EQ(data.geographic, geographic);
        EXPECT_TRUE(data.georeferenced);
        EXPECT_EQ(data.stepX, transform[1]);
        EXPECT_EQ(data.originX, transform[0] + transform[1] / 2);
        EXPECT_EQ(data.originY, transform[3] + transform[5] / 2);
        EXPECT_FALSE(data.referenceSystem.empty());
    }
    EXPECT_TRUE(HasNote(Read({0, 1000, 0, 8400000, 0, -1000}, "EPSG:3857"), "stretches the ground"));
    EXPECT_EQ(Read({500000, 30, 0, 5000000, 0, -20}, "EPSG:32632").referenceSystem, "WGS 84 / UTM zone 32N");
}

TEST_F(GroundReferenceTest, WithoutAReferenceTheCoordinatesTellDegreesFromMetres)
{
    const struct {
        std::vector<double> transform;
        double x;
        const char* note;
    } cases[] = {
        {{6, 0.001, 0, 60.001, 0, -0.001}, 55.80028, "taken as degrees"},
        {{290000, 88.8, 0, 3400000, 0, -88.8}, 88.8, "taken as metres"},
        {{0, 5, 0, 10, 0, -5}, 5.0, "taken as metres"},
        {{150, 0.001, 0, 300, 0, -0.001}, 0.001, "taken as metres"},  // no such latitude
        {{}, 30.0, "taken to be 30 m apart"},
        {{0, 1e300, 0, 0, 0, -1e300}, 30.0, "makes no sense"},
    };
    for (const auto& [transform, x, note] : cases) {
        const ElevationData data = Read(transform, "");
        EXPECT_NEAR(data.spacingX, x, 1e-4 * x) << note;
        EXPECT_TRUE(HasNote(data, note));
        const ElevationData told = Read(transform, "", 12.5);
        EXPECT_EQ(told.spacingX, 12.5);
        EXPECT_EQ(told.spacingY, 12.5);
        EXPECT_TRUE(told.notes.empty());
    }
}

TEST_F(GroundReferenceTest, RowsAndColumnsComeNorthAndWestFirst)
{
    const struct {
        std::vector<double> transform;
        std::vector<float> heights;
    } cases[] = {
        {{100, 10, 0, 220, 0, -10}, {1, 2, 3, 4, 5, 6, 7, 8}},
        {{100, 10, 0, 200, 0, 10}, {5, 6, 7, 8, 1, 2, 3, 4}},
        {{140, -10, 0, 220, 0, -10}, {4, 3, 2, 1, 8, 7, 6, 5}},
        {{140, -10, 0, 200, 0, 10}, {8, 7, 6, 5, 4, 3, 2, 1}},
    };
    for (const auto& [transform, heights] : cases) {
        const ElevationData data = Read(transform, "EPSG:32632");
        EXPECT_THAT(data.metres, testing::ElementsAreArray(heights));
        EXPECT_EQ(data.originX, 105.0);
        EXPECT_EQ(data.originY, 215.0);
        EXPECT_EQ(data.stepX, 10.0);
        EXPECT_EQ(data.stepY, -10.0);
    }
}

TEST_F(GroundReferenceTest, ATurnedGridKeepsItsProportionsAndIsNoMirrorImage)
{
    // Columns run 3-4-5 to the north-east; rows to the south-east, or mirrored to the north-west.
    const ElevationData data = Read({0, 30, 40, 0, 40, -30}, "EPSG:32632");
    EXPECT_DOUBLE_EQ(data.spacingX, 50.0);
    EXPECT_DOUBLE_EQ(data.spacingY, 50.0);
    EXPECT_FALSE(data.georeferenced);
    EXPECT_TRUE(HasNote(data, "turned against north"));
    EXPECT_EQ(data.metres.front(), 1.0f);
    EXPECT_EQ(Read({0, 30, -40, 0, 40, 30}, "EPSG:32632").metres.front(), 5.0f);
}

}  // namespace
}  // namespace tessara
