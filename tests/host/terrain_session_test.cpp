#include "host/camera.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "host/test_elevation.h"
#include "host/tree_size.h"
#include "platform/system/file_error.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <vector>

namespace tessara {
namespace {

class TerrainSessionTest : public testing::Test {
protected:
    TerrainSession Build(const ElevationData& data, const TerrainOptions& options = {})
    {
        return TerrainSession(data, options, host);
    }

    static float Elevation(const TerrainSession& terrain, LONG x, LONG y)
    {
        return terrain.Matrix().ElementAt(x, y)->value;
    }

    ComPtr<IKvoHost> host{MakeObject<KvoHost>(nullptr, nullptr).Get()};
};

TEST_F(TerrainSessionTest, NormalisesHeightsAndKeepsTheirRange)
{
    const auto data = MakeElevation(3, 2, 30.0, 30.0, [](int x, int y) { return 100 + 50 * x + 100 * y; });
    const TerrainSession terrain = Build(data);
    EXPECT_EQ(Elevation(terrain, 0, 0), 0.0f);
    EXPECT_EQ(Elevation(terrain, 1, 0), 0.25f);
    EXPECT_EQ(Elevation(terrain, 0, 1), 0.5f);
    EXPECT_EQ(Elevation(terrain, 2, 1), 1.0f);
    float low = 0.0f;
    float high = 0.0f;
    terrain.Matrix().GetElevationRange(&low, &high);
    EXPECT_EQ(low, 100.0f);
    EXPECT_EQ(high, 300.0f);
}

TEST_F(TerrainSessionTest, AFlatTerrainStandsAtZeroAndDrawsInvertibly)
{
    const TerrainSession terrain = Build(MakeElevation(4, 4, 30.0, 30.0, [](int, int) { return 7; }));
    EXPECT_EQ(Elevation(terrain, 3, 3), 0.0f);
    EXPECT_GT(terrain.Ground().ElevationScale(), 0.0);
    EXPECT_EQ(terrain.Ground().Metres(0.0), 7.0);
}

TEST_F(TerrainSessionTest, ABorderRepeatsTheOutermostHeights)
{
    TerrainOptions options;
    options.border = 2;
    const TerrainSession terrain =
        Build(MakeElevation(3, 2, 30.0, 30.0, [](int x, int y) { return x + 3 * y; }), options);
    EXPECT_EQ(terrain.Columns(), 7);
    EXPECT_EQ(terrain.Rows(), 6);
    EXPECT_EQ(Elevation(terrain, 0, 0), Elevation(terrain, 2, 2));
    EXPECT_EQ(Elevation(terrain, 6, 5), Elevation(terrain, 4, 3));
    EXPECT_EQ(Elevation(terrain, 3, 0), Elevation(terrain, 3, 2));
    float translation[3] = {};
    terrain.Surface().GetTranslation(translation);
    EXPECT_EQ(translation[0], -2.0f);
    EXPECT_EQ(translation[1], 0.0f);
    EXPECT_EQ(translation[2], -2.0f);
}

TEST_F(TerrainSessionTest, GivesBackTheHostAtItsEnd)
{
    {
        const TerrainSession terrain = Build(MakeElevation(9, 9, 1.0, 1.0, [](int x, int) { return x; }));
        EXPECT_GT(host->AddRef(), 2u);
        host->Release();
    }
    EXPECT_EQ(host->AddRef(), 2u);
    host->Release();
}

TEST_F(TerrainSessionTest, ADumpThatIsntWholeFails)
{
    const TerrainSession terrain =
        Build(MakeElevation(17, 17, 10.0, 10.0, [](int x, int y) { return 40.0 * std::sin(x) * std::cos(y); }));
    const auto camera = MakeObject<Camera>();
    camera->SetDrawUnits(terrain.Ground().DrawUnits());
    camera->SetPosition({80.0, 400.0, 80.0});
    camera->SetDirection({0.0, -1.0, 0.0});
    camera->SetViewport(100, 100);
    camera->SetLens(60.0, 1.0, 1000.0);
    for (const std::string& nowhere : {testing::TempDir() + "no-such-folder/dump.txt", std::string("/dev/full")})
        EXPECT_THROW(terrain.DumpPolygons(nowhere, *camera), FileError) << "a dump that isn't whole";
}

TEST(TreeSize, IsThatOfABuiltTreeButForAFewNodesPastTheEdge)
{
    const std::pair<int, int> sizes[] = {{1, 1},  {2, 1},   {3, 3},   {4, 4},   {5, 5},  {5, 2},    {8, 8},    {9, 9},
                                         {1, 40}, {17, 16}, {33, 20}, {64, 64}, {65, 3}, {63, 100}, {129, 130}};
    for (const auto& [width, height] : sizes) {
        std::vector<ElevationElement> heights(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        for (ElevationElement& element : heights)
            element.value = 1.0f;
        HeightSource source;
        source.Grid = heights.data();
        source.Width = source.Stride = width;
        source.Height = height;
        TerrainLod terrain;
        terrain.InitQuadTree(source);
        const TreeSize size = MeasureTree(width, height);
        const auto built = static_cast<std::uint64_t>(terrain.Root->CountNodes());
        EXPECT_LE(size.nodes, built) << width << " x " << height;
        EXPECT_GE(size.nodes + static_cast<std::uint64_t>(width + height), built) << width << " x " << height;
        EXPECT_EQ(size.levels, terrain.RootCorner->Level + 1) << width << " x " << height;
    }
}

}  // namespace
}  // namespace tessara
