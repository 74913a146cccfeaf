#include "host/elevation/elevation_fill.h"
#include "samples/noise/plane_noise.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace tessara {
namespace {

constexpr float kNothing = std::numeric_limits<float>::quiet_NaN();

struct Rectangle {
    int left, top, right, bottom;  // the last two outside

    bool Holds(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
};

ElevationData GridOf(int width, int height, const std::function<double(int x, int y)>& value,
                     const std::vector<Rectangle>& holes = {})
{
    ElevationData data;
    data.width = width;
    data.height = height;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool isHole =
                std::any_of(holes.begin(), holes.end(), [&](const Rectangle& hole) { return hole.Holds(x, y); });
            data.metres.push_back(isHole ? kNothing : static_cast<float>(value(x, y)));
        }
    return data;
}

float At(const ElevationData& data, int x, int y)
{
    return data.metres[static_cast<std::size_t>(x + y * data.width)];
}

TEST(ElevationFill, SmallHolesAreWorkedOutByHand)
{
    const struct {
        int width;
        std::vector<float> holes;
        std::vector<float> smooth;
        float tolerance;
    } cases[] = {
        {5, {0, kNothing, kNothing, kNothing, 8}, {0, 2, 4, 6, 8}, 0.01f},
        {1, {3, kNothing, kNothing, 9}, {3, 5, 7, 9}, 0.01f},
        {2, {5, kNothing}, {5, 5}, 0.0f},
        {3, {0, 10, 0, 20, kNothing, 40, 0, 50, 0}, {0, 10, 0, 20, 30, 40, 0, 50, 0}, 0.0f},
        {2, {1, kNothing, kNothing, 3}, {1, 2, 2, 3}, 0.0f},
    };
    for (const auto& [width, holes, smooth, tolerance] : cases) {
        ElevationData data;
        data.width = width;
        data.height = static_cast<int>(holes.size()) / width;
        data.metres = holes;
        ElevationData lowest = data;
        EXPECT_TRUE(FillMissing(data, ElevationFill::Smooth));
        EXPECT_THAT(data.metres, testing::Pointwise(testing::FloatNear(tolerance), smooth));
        EXPECT_TRUE(FillMissing(lowest, ElevationFill::Lowest));
        for (std::size_t i = 0; i < holes.size(); ++i)
            EXPECT_EQ(lowest.metres[i], std::isnan(holes[i]) ? smooth[0] : holes[i]);
        EXPECT_EQ(lowest.missing, data.missing);
        EXPECT_GT(data.missing, 0u);
    }
}

TEST(ElevationFill, AGridWithoutAnyDataStaysAsItIs)
{
    ElevationData data = GridOf(3, 2, [](int, int) { return kNothing; });
    EXPECT_FALSE(FillMissing(data, ElevationFill::Smooth));
    EXPECT_EQ(data.missing, 6u);
}

TEST(ElevationFill, AGridWithoutHolesKeepsEveryBit)
{
    ElevationData data = GridOf(40, 30, [](int x, int y) { return 0.1 * x * y; });
    const std::vector<float> before = data.metres;
    EXPECT_TRUE(FillMissing(data, ElevationFill::Smooth));
    EXPECT_EQ(data.metres, before);
    EXPECT_EQ(data.missing, 0u);
    EXPECT_EQ(data.minimum, 0.0f);
    EXPECT_EQ(data.maximum, static_cast<float>(0.1 * 39 * 29));
}

TEST(ElevationFill, ASlopeRunsOnThroughAHole)
{
    const auto slope = [](int x, int y) { return 3.0 * x - 2.0 * y; };
    ElevationData data = GridOf(300, 200, slope, {{20, 30, 150, 170}, {170, 5, 290, 90}});
    FillMissing(data, ElevationFill::Smooth);
    double worst = 0.0;
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x)
            worst = std::max(worst, std::abs(static_cast<double>(At(data, x, y)) - slope(x, y)));
    EXPECT_LT(worst, 0.01 * 1300.0);  // of the whole range
}

TEST(ElevationFill, OnlyTheBorderOfAHoleCounts)
{
    // A lake on a table mountain, one cell of shore around it.
    const Rectangle shore{29, 30, 91, 77};
    const Rectangle lake{30, 31, 90, 76};
    ElevationData data =
        GridOf(128, 128, [&](int x, int y) { return shore.Holds(x, y) ? 100.0 : 5000.0; }, {lake, {0, 0, 5, 5}});
    FillMissing(data, ElevationFill::Smooth);
    for (int y = lake.top; y < lake.bottom; ++y)
        for (int x = lake.left; x < lake.right; ++x)
            ASSERT_EQ(At(data, x, y), 100.0f) << x << ' ' << y;
    EXPECT_EQ(At(data, 0, 0), 5000.0f);
}

TEST(ElevationFill, RoughGroundGetsNoSpikesPitsOrSteps)
{
    constexpr int kWidth = 211;
    constexpr int kHeight = 157;
    const PlaneNoise noise(5);
    const auto rough = [&](int x, int y) { return 1000.0 * noise.Sum(x / 40.0, y / 40.0, 6, 0.7); };
    // Inside, along edges, in corners, thin, and single.
    const std::vector<Rectangle> holes = {{30, 20, 120, 80},   {0, 100, 60, 140},  {180, 0, 211, 60},   {0, 0, 10, 8},
                                          {70, 110, 200, 111}, {130, 75, 131, 76}, {205, 150, 211, 157}};
    ElevationData original = GridOf(kWidth, kHeight, rough);
    ScanHeights(original);
    ElevationData data = GridOf(kWidth, kHeight, rough, holes);
    FillMissing(data, ElevationFill::Smooth);
    for (const Rectangle& hole : holes) {
        float low = std::numeric_limits<float>::max();
        float high = std::numeric_limits<float>::lowest();
        const auto look = [&](int x, int y) {
            if (x >= 0 && y >= 0 && x < kWidth && y < kHeight) {
                low = std::min(low, At(original, x, y));
                high = std::max(high, At(original, x, y));
            }
        };
        for (int x = hole.left; x < hole.right; ++x) {
            look(x, hole.top - 1);
            look(x, hole.bottom);
        }
        for (int y = hole.top; y < hole.bottom; ++y) {
            look(hole.left - 1, y);
            look(hole.right, y);
        }
        for (int y = hole.top; y < hole.bottom; ++y) {
            for (int x = hole.left; x < hole.right; ++x) {
                ASSERT_GE(At(data, x, y), low) << x << ' ' << y;
                ASSERT_LE(At(data, x, y), high) << x << ' ' << y;
                // Two cells off the border no step is left of its roughness.
                const bool isInside = hole.Holds(x - 2, y - 2) && hole.Holds(x + 2, y + 2);
                const float step = isInside ? std::abs(At(data, x, y) - At(data, x + 1, y)) : 0.0f;
                ASSERT_LE(step, 0.15f * (high - low)) << x << ' ' << y;
            }
        }
    }
    EXPECT_GE(data.minimum, original.minimum);
    EXPECT_LE(data.maximum, original.maximum);
}

}  // namespace
}  // namespace tessara
