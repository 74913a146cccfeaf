#include "host/elevation/elevation_file.h"

#include <cpl_json.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace tessara {
namespace {

namespace fs = std::filesystem;

/// Real elevation files, each with a description beside it; not part of the sources.
class RealElevationTest : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override
    {
        const char* told = std::getenv("TESSARA_DEM_DIR");
        folder_ = told != nullptr ? fs::path(told) : fs::path(TESSARA_SOURCE_DIR) / "../shared/dem";
        if (!fs::exists(folder_ / GetParam()))
            GTEST_SKIP() << "no elevation file " << GetParam() << " in " << folder_ << " (TESSARA_DEM_DIR)";
    }

    CPLJSONObject Description() const
    {
        std::string name = fs::path(GetParam()).stem().string();
        if (const std::size_t suffix = name.find("_usgs"); suffix != name.npos)
            name.erase(suffix);
        CPLJSONDocument document;
        EXPECT_TRUE(document.Load((folder_ / (name + ".json")).string()));
        return document.GetRoot();
    }

    fs::path folder_;
};

TEST_P(RealElevationTest, IsReadAsDescribed)
{
    const CPLJSONObject description = Description();
    const bool isPicture = fs::path(GetParam()).extension() == ".png";
    ElevationReadOptions options;
    if (isPicture && description.GetObj("nodata_pixel").GetType() == CPLJSONObject::Type::Integer)
        options.noData = description.GetInteger("nodata_pixel");
    const ElevationData data = ReadElevationFile((folder_ / GetParam()).string(), options);
    EXPECT_EQ(data.width, description.GetInteger("width"));
    EXPECT_EQ(data.height, description.GetInteger("height"));
    // A picture has no room for its offset.
    const double offset = isPicture ? description.GetDouble("height_offset_m", 0.0) : 0.0;
    EXPECT_EQ(static_cast<double>(data.minimum) + offset, description.GetDouble("min_m"));
    EXPECT_EQ(static_cast<double>(data.maximum) + offset, description.GetDouble("max_m"));
    EXPECT_EQ(data.missing, static_cast<std::size_t>(description.GetInteger("nodata_count", 0)));
    // The descriptions of degrees reckon with a sphere.
    const double tolerance = data.geographic ? 0.003 : 1e-9;
    EXPECT_NEAR(data.spacingX / description.GetDouble("sample_spacing_x_m"), 1.0, tolerance);
    EXPECT_NEAR(data.spacingY / description.GetDouble("sample_spacing_y_m"), 1.0, tolerance);
    EXPECT_EQ(data.geographic, description.GetString("crs") == "EPSG:4326");
    if (data.georeferenced && description.GetObj("origin_x").IsValid()) {
        EXPECT_NEAR(data.originX - data.stepX / 2, description.GetDouble("origin_x"), 1e-3);
        EXPECT_NEAR(data.originY - data.stepY / 2, description.GetDouble("origin_y"), 1e-3);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, RealElevationTest,
                         testing::Values("bigtujunga_30m.tif", "bigtujunga_30m.png", "jacksboro_90m.asc",
                                         "mandakini_90m.asc", "sthelens_30m_usgs.dem", "sthelens_30m.png"),
                         [](const auto& file) {
                             std::string name = file.param;
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });

}  // namespace
}  // namespace tessara
