#include "app/viewer/terrain/ground_model.h"
#include "app/viewer/test_ground.h"

#include <gtest/gtest.h>

#include <array>

namespace tessara {
namespace {

using test::RoughElevation;

/// Where a ray first gets below the ground, by many small steps and halving. \return a negative distance for nowhere
double MarchedDistance(const GroundModel& ground, const Vector3& origin, const Vector3& direction, double length)
{
    constexpr int kSteps = 40000;
    const auto above = [&](double distance) {
        const Vector3 at = origin + direction * distance;
        return !ground.Contains(at.x, at.z) || at.y > ground.HeightAt(at.x, at.z);
    };
    bool wasOver = ground.Contains(origin.x, origin.z);
    for (int i = 1; i <= kSteps; ++i) {
        double high = length * i / kSteps;
        const Vector3 at = origin + direction * high;
        const bool isOver = ground.Contains(at.x, at.z);
        if (above(high)) {
            wasOver = isOver;
            continue;
        }
        if (!wasOver)
            return -1.0;  // through a side, within a step
        double low = length * (i - 1) / kSteps;
        for (int halving = 0; halving < 60; ++halving) {
            const double middle = 0.5 * (low + high);
            (above(middle) ? low : high) = middle;
        }
        return high;
    }
    return -1.0;
}

TEST(GroundModel, RaysMeetTheGroundWhereSmallStepsFindIt)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    int met = 0;
    int missed = 0;
    for (unsigned round = 0; round < 300; ++round) {
        const ElevationData data =
            RoughElevation(round, 2 + static_cast<int>(round % 23), 2 + static_cast<int>(round % 9),
                           round % 2 ? 30.0 : 0.5, round % 3 ? 30.0 : 12.0);
        const GroundFrame frame(data, 0.5 + round % 4);
        const GroundModel ground(data, frame);
        const double size = std::max({frame.Width(), frame.Depth(), frame.Relief()});
        const Vector3 origin{frame.Width() * (0.5 + any(random)),
                             frame.Relief() + size * (0.01 + std::fabs(any(random))),
                             frame.Depth() * (0.5 + any(random))};
        const Vector3 target{frame.Width() * (0.5 + 0.6 * any(random)), frame.Relief() * 0.5,
                             frame.Depth() * (0.5 + 0.6 * any(random))};
        const Vector3 direction = Normalised(target - origin);
        const double expected = MarchedDistance(ground, origin, direction, 6.0 * size);
        const auto picked = ground.Pick(origin, direction * (round % 5 ? 1.0 : 1e-5));
        ASSERT_EQ(picked.has_value(), expected >= 0.0) << round;
        if (!picked) {
            ++missed;
            continue;
        }
        ++met;
        EXPECT_NEAR(Length(*picked - origin), expected, 1e-3 * size) << round;
        EXPECT_NEAR(picked->y, ground.HeightAt(picked->x, picked->z), 1e-7 * size) << round;
    }
    EXPECT_GT(met, 100);
    EXPECT_GT(missed, 30);
}

TEST(GroundModel, RaysAlongAxesAndAtTheLimits)
{
    // Level at 100 m, with a wall of 500 m at column 3; true space counts from 100 m.
    const ElevationData data = MakeElevation(6, 5, 10.0, 20.0, [](int x, int) { return x == 3 ? 500 : 100; });
    const GroundFrame frame(data, 2.0);
    const GroundModel ground(data, frame);
    struct Case {
        const char* what;
        Vector3 origin;
        Vector3 direction;
        std::optional<Vector3> expected;
    };
    const std::array cases = {
        Case{"straight down on a grid point", {10.0, 900.0, 20.0}, {0, -1, 0}, Vector3{10.0, 0.0, 20.0}},
        Case{"straight down on the ridge", {30.0, 900.0, 37.0}, {0, -1, 0}, Vector3{30.0, 800.0, 37.0}},
        Case{"straight down on the rim", {-4.0, 900.0, 86.0}, {0, -1, 0}, Vector3{-4.0, 0.0, 86.0}},
        Case{"straight down beside the rim", {-6.0, 900.0, 86.0}, {0, -1, 0}, std::nullopt},
        Case{"level against the wall", {0.0, 400.0, 40.0}, {1, 0, 0}, Vector3{25.0, 400.0, 40.0}},
        Case{"level against it from the east", {60.0, 400.0, 40.0}, {-1, 0, 0}, Vector3{35.0, 400.0, 40.0}},
        Case{"level along a column of the grid", {20.0, 400.0, -50.0}, {0, 0, 1}, std::nullopt},
        Case{"level just over the wall", {0.0, 800.001, 40.0}, {1, 0, 0}, std::nullopt},
        Case{"up", {10.0, 900.0, 20.0}, {0, 1, 0}, std::nullopt},
        Case{"from below the ground", {10.0, -5.0, 20.0}, {0, 1, 0}, std::nullopt},
        Case{"from within the wall", {30.0, 300.0, 20.0}, {1, 0, 0}, std::nullopt},
        Case{"through a side", {-90.0, -40.0, 20.0}, {1, 0.45, 0}, std::nullopt},
        Case{"from below through the floor", {10.0, -400.0, 20.0}, {0, 1, 0}, std::nullopt},
        Case{"past a corner", {-15.0, 100.0, -5.0}, {1, -1, -1}, std::nullopt},
        Case{"nowhere", {10.0, 900.0, 20.0}, {0, 0, 0}, std::nullopt},
    };
    for (const Case& each : cases) {
        const auto picked = ground.Pick(each.origin, each.direction);
        ASSERT_EQ(picked.has_value(), each.expected.has_value()) << each.what;
        if (picked) {
            EXPECT_LT(Length(*picked - *each.expected), 1e-6) << each.what;
        }
    }
}

TEST(GroundModel, FarAndGrazingRaysLoseNoPrecision)
{
    const ElevationData data = RoughElevation(5, 1000, 1000, 30.0, 30.0);
    const GroundFrame frame(data, 1.0);
    const GroundModel ground(data, frame);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> any(0.0, 1.0);
    for (int round = 0; round < 2000; ++round) {
        const Vector3 target{29970.0 * any(random), frame.Relief() * 0.6 * any(random), 29970.0 * any(random)};
        const double turn = 6.28 * any(random);
        const double fall = round % 2 ? -0.02 : -0.5 * any(random);
        const Vector3 direction = Normalised({std::cos(turn), fall, std::sin(turn)});
        const Vector3 origin = target - direction * (1e6 * any(random));
        const auto picked = ground.Pick(origin, direction);
        if (!picked)
            continue;
        ASSERT_NEAR(picked->y, ground.HeightAt(picked->x, picked->z), 1e-5) << round;
    }
}

TEST(GroundModel, SlopesAreThoseOfAPlaneUpToItsEdges)
{
    // 3 m up per 4 m to the east, 5 m per 20 m to the south.
    const ElevationData data = MakeElevation(9, 7, 4.0, 20.0, [](int x, int y) { return 3 * x + 5 * y; });
    for (const double exaggeration : {1.0, 3.0}) {
        const GroundFrame frame(data, exaggeration);
        const GroundModel ground(data, frame);
        const double expected = std::atan(std::hypot(0.75, 0.25)) * 180.0 / 3.14159265358979;
        for (const auto& [x, z] : {std::pair{16.0, 60.0}, {0.0, 0.0}, {32.0, 120.0}, {33.9, 50.0}, {1.0, 119.0}})
            EXPECT_NEAR(ground.SlopeAt(x, z), expected, x > 32.0 ? 5.0 : 1e-6) << x << " " << z;
        EXPECT_DOUBLE_EQ(ground.HeightAt(6.0, 30.0), exaggeration * (4.5 + 7.5));
        EXPECT_DOUBLE_EQ(ground.MetresAt(6.0, 30.0), 4.5 + 7.5);
        EXPECT_DOUBLE_EQ(ground.MetresAt(-50.0, 1e9), 30.0);
    }
    // A grid of one row or column has ground too.
    const ElevationData row = MakeElevation(4, 1, 4.0, 4.0, [](int x, int) { return 3 * x; });
    const GroundFrame frame(row, 1.0);
    EXPECT_NEAR(GroundModel(row, frame).SlopeAt(6.0, 0.0), 36.8698976, 1e-6);
}

}  // namespace
}  // namespace tessara
