#include "host/kvo_host.h"
#include "host/project/project_file.h"
#include "host/project/project_terrain.h"
#include "host/project/project_writer.h"
#include "host/storage/sqlite_file.h"
#include "host/terrain_session.h"
#include "host/test_elevation.h"
#include "persistence/saved_value.h"
#include "support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <span>

namespace tessara::test {

namespace {

using testing::ElementsAre;

class ProjectTerrainTest : public testing::Test {
protected:
    /// Saves a terrain of such a border and reads it back.
    ProjectTerrain Trip(const ElevationData& data, const ProjectView& view, int border = 0)
    {
        ElevationPalette palette;
        palette.SetRed(3, 77);
        palette.minElevation = 2;
        const TerrainSession session(
            data, {.exaggeration = 1.5, .levelOfDetail = 40.0, .palette = &palette, .border = border}, host_);
        {
            ProjectWriter writer(path_);
            WriteTerrain(*writer.AddElement("terrain"), session, data, 1.5, view);
            writer.Commit();
        }
        for (const ProjectPlace::Value& value : Place()->Values())
            EXPECT_EQ(value.deliverable, FindSavedValue(value.name).has_value()) << value.name;
        return ReadTerrain(*Place());
    }
    ComPtr<ProjectPlace> Place() const { return ProjectFile(path_).Open("terrain"); }

    /// A place with nothing but what some other host's surface saved.
    ProjectTerrain ReadForeign(const std::vector<float>& elevations, float low, float high, float scale)
    {
        ProjectWriter writer(path_);
        const auto place = writer.AddElement("terrain");
        const std::int32_t width = static_cast<std::int32_t>(elevations.size());
        const std::int32_t height = 1;
        place->Write("MATRIX_WIDTH", 8, &width, 4);
        place->Write("MATRIX_HEIGHT", 8, &height, 4);
        place->Write("MATRIX_DATA", 16, elevations.data(), elevations.size() * 4);
        place->Write("MIN_ELEVATION", 16, &low, 4);
        place->Write("MAX_ELEVATION", 16, &high, 4);
        place->Write("ELEVATION_SCALE", 16, &scale, 4);
        place->Set("exaggeration", -3.0);
        place->Set("camera.east", 1.0);
        place->Set("camera.tilt", std::string("steep"));
        return ReadTerrain(*place);
    }
    static float Float(const ProjectPlace& place, const char* name)
    {
        float number = 0.0f;
        std::memcpy(&number, place.Read(name)->data(), sizeof number);
        return number;
    }

    ScratchFolder folder_;
    const std::string path_ = folder_ / "project.tessara";
    ComPtr<IKvoHost> host_{MakeObject<KvoHost>(nullptr, nullptr).Get()};
};

TEST_F(ProjectTerrainTest, ATerrainComesBackWithItsPlaceAndItsView)
{
    ElevationData data =
        MakeElevation(17, 9, 25.0, 30.0, [](int x, int y) { return 100 + 13 * x * y % 50 + x + 0.1 * y; });
    data.holes.resize(data.metres.size());
    data.holes[3] = data.holes[20] = data.holes[152] = 1;
    data.noDataMark = -32768.0;
    data.georeferenced = true;
    data.geographic = true;
    data.originX = 7.123456789012345;
    data.originY = 46.5;
    data.stepX = 0.1;
    data.stepY = -0.2;
    data.turnX = 0.05;
    data.turnY = 0.03;
    data.referenceSystem = "Erde";
    data.referenceWkt = "GEOGCS[...]";
    ProjectView view;
    view.camera = Vector3{1.5, -2.5, 3000.25};
    view.target = Vector3{4.0, 5.0, 6.0};
    view.fieldOfView = 50.0;
    view.levelOfDetail = 40.0;
    view.sun = {120.0, 15.0};
    view.color = false;
    view.sea = true;
    view.seaLevel = -12.5;
    view.holes = false;
    view.palette = "desert";
    const TerrainSession direct(data, {.exaggeration = 1.5, .levelOfDetail = 40.0}, host_);
    for (const int border : {0, 2}) {
        const ProjectTerrain loaded = Trip(data, view, border);
        EXPECT_EQ(loaded.data.width, 17);
        EXPECT_EQ(loaded.data.height, 9);
        EXPECT_EQ(loaded.data.minimum, data.minimum);
        EXPECT_EQ(loaded.data.maximum, data.maximum);
        EXPECT_EQ(loaded.data.spacingX, 25.0);
        EXPECT_EQ(loaded.data.spacingY, 30.0);
        EXPECT_TRUE(loaded.data.georeferenced && loaded.data.geographic);
        EXPECT_EQ(loaded.data.originX, data.originX);
        EXPECT_EQ(loaded.data.stepY, -0.2);
        EXPECT_EQ(loaded.data.turnX, 0.05);
        EXPECT_EQ(loaded.data.turnY, 0.03);
        EXPECT_EQ(loaded.data.referenceSystem, "Erde");
        EXPECT_EQ(loaded.data.referenceWkt, "GEOGCS[...]");
        EXPECT_EQ(loaded.exaggeration, 1.5);
        EXPECT_EQ(loaded.palette.red[3], 77);
        EXPECT_EQ(loaded.palette.minElevation, 2);
        ASSERT_EQ(loaded.elevations.size(), data.metres.size());
        for (std::size_t i = 0; i < data.metres.size(); ++i) {
            const auto at = static_cast<LONG>(i);
            EXPECT_EQ(loaded.elevations[i], direct.Matrix().ElementAt(at % 17, at / 17)->value) << "to the bit";
        }
        EXPECT_EQ(loaded.data.metres, data.metres) << "to the bit as well";
        EXPECT_EQ(loaded.data.holes, data.holes);
        EXPECT_EQ(loaded.data.noDataMark, -32768.0);
        EXPECT_EQ(loaded.view.camera->z, 3000.25);
        EXPECT_EQ(loaded.view.target->x, 4.0);
        EXPECT_FALSE(loaded.view.azimuth);
        EXPECT_EQ(loaded.view.sun, view.sun);
        EXPECT_EQ(loaded.view.color, false);
        EXPECT_EQ(loaded.view.sea, true);
        EXPECT_EQ(loaded.view.seaLevel, -12.5);
        EXPECT_EQ(loaded.view.holes, false);
        EXPECT_EQ(loaded.view.palette, "desert");
        const auto place = Place();
        EXPECT_EQ(Float(*place, "KVOxml_LOD"), 40.0f);
        EXPECT_EQ(Float(*place, "ELEVATION_SCALE"), static_cast<float>(direct.Ground().ElevationScale()));
        EXPECT_THAT(*place->Read("TRANSLATION"), testing::Each(0)) << "the border is the session's own";
    }
}

TEST_F(ProjectTerrainTest, AHeightCountsAsMeasuredOnlyAsLongAsItsElevationIsItsOwn)
{
    ElevationData data = MakeElevation(40, 30, 25.0, 30.0, [](int x, int y) { return 0.1 * x * x + 0.37 * y; });
    data.holes.assign(data.metres.size(), 0);
    data.holes[7] = data.holes[8] = 1;
    ASSERT_EQ(Trip(data, {}).data.metres, data.metres);
    {
        // As a program does that knows of elevations alone.
        ProjectWriter writer(path_, path_);
        const auto place = writer.Open("terrain");
        std::vector<float> elevations(data.metres.size());
        std::memcpy(elevations.data(), place->Read("MATRIX_DATA")->data(), elevations.size() * sizeof(float));
        elevations[8] = 0.5f;
        elevations[100] = 1.0f;
        place->Write("MATRIX_DATA", 16, elevations.data(), elevations.size() * sizeof(float));
        writer.Commit();
    }
    const ElevationData changed = ReadTerrain(*Place()).data;
    EXPECT_EQ(changed.metres[8], data.minimum + (data.maximum - data.minimum) / 2);
    EXPECT_EQ(changed.metres[100], data.maximum);
    EXPECT_TRUE(!changed.HasData(7) && changed.HasData(8)) << "who gives a hole a height fills it";
    EXPECT_EQ(changed.missing, 1u);
    EXPECT_EQ(changed.metres[101], data.metres[101]);
    for (const std::size_t size : {0, 1, 100, 160}) {
        ProjectWriter writer(path_, path_);
        const auto place = writer.Open("terrain");
        const std::vector<char> bytes(size, '\x7F');
        place->Write("MATRIX_METRES", 0x80, bytes.data(), size);
        place->Write("MATRIX_HOLES", 0x80, bytes.data(), size);
        EXPECT_NEAR(ReadTerrain(*place).data.metres[100], data.maximum, 1e-4f) << size;
    }
}

TEST_F(ProjectTerrainTest, WhatAnotherHostSavedKeepsItsProportions)
{
    const ProjectTerrain terrain = ReadForeign({0.0f, 0.5f, 1.0f, 2.0f}, 100.0f, 300.0f, 20.0f);
    EXPECT_THAT(terrain.data.metres, ElementsAre(100.0f, 200.0f, 300.0f, 500.0f));
    EXPECT_EQ(terrain.data.spacingX, 10.0);
    EXPECT_EQ(terrain.data.spacingY, 10.0);
    EXPECT_EQ(terrain.exaggeration, 1.0) << "a negative one makes no sense";
    EXPECT_FALSE(terrain.view.camera) << "one coordinate is no place";
    EXPECT_FALSE(terrain.view.tilt);
    EXPECT_EQ(terrain.palette.nodes.size(), 4u) << "the default palette";
}

TEST_F(ProjectTerrainTest, NumbersThatMakeNoSenseBecomeUsableOnes)
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    const ProjectTerrain terrain = ReadForeign({none, -endless, 3e38f, 0.25f}, none, endless, 0.0f);
    EXPECT_THAT(terrain.elevations, ElementsAre(0.0f, 0.0f, 1e9f, 0.25f));
    EXPECT_EQ(terrain.data.minimum, 0.0f);
    EXPECT_EQ(terrain.data.maximum, 255.0f);
    EXPECT_EQ(terrain.data.spacingX, 1.0);
    for (const float metres : terrain.data.metres)
        EXPECT_TRUE(std::isfinite(metres));
    EXPECT_EQ(ReadForeign({0.5f}, 300.0f, 100.0f, 1.0f).data.minimum, 100.0f) << "the ends in the wrong order";
}

TEST_F(ProjectTerrainTest, APlaceWithoutElevationsIsNoTerrain)
{
    ProjectWriter writer(path_);
    const auto place = writer.AddElement("empty");
    EXPECT_EQ(ReadTerrainFrame(*place).data.width, 0);
    EXPECT_THROW(ReadTerrain(*place), StorageError);
    const std::int32_t sizes[] = {70000, 70000};
    place->Write("MATRIX_WIDTH", 8, &sizes[0], 4);
    place->Write("MATRIX_HEIGHT", 8, &sizes[1], 4);
    place->Write("MATRIX_DATA", 16, "1234", 4);
    EXPECT_THROW(ReadTerrain(*place), StorageError);
}

TEST_F(ProjectTerrainTest, ChangesReachTheSurfacesValues)
{
    Trip(MakeElevation(5, 5, 10.0, 10.0, [](int x, int) { return 25 * x; }), {});
    ProjectWriter writer(path_, path_);
    const auto place = writer.Open("terrain");
    WriteExaggeration(*place, 3.0);
    WriteLevelOfDetail(*place, 99.0);
    WritePalette(*place, ElevationPalette());
    EXPECT_EQ(Float(*place, "ELEVATION_SCALE"), 30.0f) << "100 m over 10 m, three times";
    EXPECT_EQ(Float(*place, "KVOxml_LOD"), 99.0f);
    EXPECT_EQ(ReadTerrainFrame(*place).exaggeration, 3.0);
    EXPECT_EQ(ReadTerrainFrame(*place).palette.red[3], ElevationPalette().red[3]);
}

TEST_F(ProjectTerrainTest, ANewAimEndsTheOldOne)
{
    ProjectWriter writer(path_);
    const auto place = writer.AddElement("terrain");
    ProjectView view;
    view.azimuth = 10.0;
    view.tilt = 20.0;
    view.target = Vector3{4.0, 5.0, 6.0};
    view.sun = {1.0, 2.0};
    RememberView(*place, view);
    ASSERT_TRUE(ViewOf(place->Settings()).target);
    ProjectView standing;
    standing.camera = Vector3{1.0, 2.0, 3.0};
    RememberView(*place, standing);
    EXPECT_FALSE(ViewOf(place->Settings()).azimuth);
    EXPECT_FALSE(ViewOf(place->Settings()).target);
    EXPECT_TRUE(ViewOf(place->Settings()).camera);
    EXPECT_TRUE(ViewOf(place->Settings()).sun) << "what doesn't contradict stays";
    ProjectView turned;
    turned.tilt = 5.0;
    RememberView(*place, turned);
    EXPECT_FALSE(ViewOf(place->Settings()).camera);
    ForgetView(*place);
    EXPECT_TRUE(place->Settings().empty());
}

}  // namespace

}  // namespace tessara::test
