#include "host/elevation/elevation_error.h"
#include "samples/country/sample_terrain.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace tessara {
namespace {

float At(const ElevationData& data, int x, int y)
{
    return data.metres[static_cast<std::size_t>(x + y * data.width)];
}

/// FNV-1a over the bits of the heights.
std::uint64_t HashOf(const ElevationData& data)
{
    std::uint64_t hash = 14695981039346656037u;
    for (const float height : data.metres)
        hash = (hash ^ std::bit_cast<std::uint32_t>(height)) * 1099511628211u;
    return hash;
}

TEST(SampleTerrain, IsTheSameOnEveryMachine)
{
    EXPECT_EQ(HashOf(MakeSampleTerrain(129)), 555465876832111604u);
    EXPECT_EQ(HashOf(MakeSampleTerrain(257, 7)), 17638766142824167405u);
}

TEST(SampleTerrain, HasASeaACoastAndMountains)
{
    const ElevationData data = MakeSampleTerrain(257);
    const auto sea = std::count(data.metres.begin(), data.metres.end(), 0.0f);
    const double share = static_cast<double>(sea) / static_cast<double>(data.metres.size());
    EXPECT_GT(share, 0.1);
    EXPECT_LT(share, 0.4);
    EXPECT_EQ(data.minimum, 0.0f);
    EXPECT_GT(data.maximum, 1500.0f);
    EXPECT_LT(data.maximum, 2600.0f);
    EXPECT_TRUE(std::all_of(data.metres.begin(), data.metres.end(), [](float h) { return std::isfinite(h); }));
    EXPECT_EQ(data.spacingX, 60.0);
    EXPECT_TRUE(data.georeferenced);
    EXPECT_FALSE(data.referenceSystem.empty());
}

TEST(SampleTerrain, ItsValleysLeadDownToTheSea)
{
    const ElevationData data = MakeSampleTerrain(513);
    int land = 0;
    int pits = 0;
    for (int y = 1; y < 512; ++y)
        for (int x = 1; x < 512; ++x) {
            if (At(data, x, y) <= 0.0f)
                continue;
            ++land;
            bool isPit = true;
            for (int j = -1; j <= 1; ++j)
                for (int i = -1; i <= 1; ++i)
                    isPit = isPit && (At(data, x + i, y + j) > At(data, x, y) || (i == 0 && j == 0));
            pits += isPit ? 1 : 0;
        }
    EXPECT_LT(pits, land / 500);  // noise of this roughness has one in twenty
}

TEST(SampleTerrain, IsTheSameCountryAtEverySize)
{
    const ElevationData fine = MakeSampleTerrain(513);
    for (const int step : {2, 4, 64}) {
        const ElevationData coarse = MakeSampleTerrain(512 / step + 1);
        double sum = 0.0;
        for (int y = 0; y < coarse.height; ++y)
            for (int x = 0; x < coarse.width; ++x)
                sum += std::abs(static_cast<double>(At(coarse, x, y) - At(fine, x * step, y * step)));
        EXPECT_LT(sum / static_cast<double>(coarse.metres.size()), 80.0) << step;
    }
}

TEST(SampleTerrain, EverySeedHasLandAndSea)
{
    for (const std::uint32_t seed : {0u, 1u, 2u, 99u, 0xFFFFFFFFu}) {
        const ElevationData data = MakeSampleTerrain(65, seed);
        EXPECT_EQ(data.minimum, 0.0f) << seed;
        EXPECT_GT(data.maximum, 800.0f) << seed;
    }
}

TEST(SampleTerrain, SizesHaveBounds)
{
    EXPECT_EQ(MakeSampleTerrain(2).metres.size(), 4u);
    for (const int size : {-1, 0, 1, 8194, 1 << 30})
        EXPECT_THROW(MakeSampleTerrain(size), ElevationError) << size;
}

TEST(SampleTerrain, ProgressRisesToTheEnd)
{
    std::vector<double> heard;
    MakeSampleTerrain(129, 1, [&](double fraction) { heard.push_back(fraction); });
    EXPECT_TRUE(std::is_sorted(heard.begin(), heard.end()));
    EXPECT_DOUBLE_EQ(heard.back(), 1.0);
}

}  // namespace
}  // namespace tessara
