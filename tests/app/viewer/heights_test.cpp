#include "app/viewer/terrain/height_brush.h"
#include "app/viewer/terrain/height_history.h"
#include "app/viewer/test_ground.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

namespace tessara {
namespace {

using test::RoughElevation;

constexpr float kNoFloor = -1e30f;

std::size_t Index(const ElevationData& data, int column, int row)
{
    return static_cast<std::size_t>(column + row * data.width);
}

/// One application of a brush. \return the heights afterwards
ElevationData Worked(const ElevationData& data, const BrushSettings& brush, const BrushPoint& point, float floor)
{
    ElevationData result = data;
    Brush(result, BrushArea(data, point, brush.radius), brush, point, floor);
    return result;
}

TEST(HeightBrush, RaisesAndLowersMostInTheMiddleAndNothingBeyondItsRadius)
{
    const ElevationData flat = MakeElevation(41, 31, 10.0, 20.0, [](int, int) { return 200; });
    const BrushPoint point{205.0, 300.0, 0.0, 0.5};
    for (const auto kind : {BrushKind::Raise, BrushKind::Lower}) {
        const double sign = kind == BrushKind::Raise ? 1.0 : -1.0;
        const ElevationData after = Worked(flat, {kind, 95.0, 0.8}, point, kNoFloor);
        double last = 1e9;
        for (int column = 20; column > 0; --column) {
            const double away = 205.0 - 10.0 * column;
            const double change = sign * (static_cast<double>(after.metres[Index(flat, column, 15)]) - 200.0);
            EXPECT_LE(change, last);
            EXPECT_EQ(change > 0.0, away < 95.0) << column;
            EXPECT_NEAR(after.metres[Index(flat, 41 - column, 15)], after.metres[Index(flat, column, 15)], 1e-3);
            last = change;
        }
        // At full strength the middle moves by about a third of the radius in a second.
        EXPECT_NEAR(sign * (static_cast<double>(after.metres[Index(flat, 20, 15)]) - 200.0), 0.35 * 95.0 * 0.4, 0.2);
    }
}

TEST(HeightBrush, SmoothsAndFlattensTowardsWhatTheyPromise)
{
    ElevationData data = RoughElevation(9, 40, 40, 10.0, 10.0);
    const BrushPoint point{200.0, 190.0, 123.5, 0.1};
    const auto roughness = [](const ElevationData& heights) {
        double sum = 0.0;
        for (int row = 12; row < 26; ++row) {
            for (int column = 13; column < 27; ++column)
                sum += std::fabs(static_cast<double>(heights.metres[Index(heights, column, row)] -
                                                     heights.metres[Index(heights, column + 1, row)]));
        }
        return sum;
    };
    const ElevationData before = data;
    for (int i = 0; i < 40; ++i)
        data = Worked(data, {BrushKind::Smooth, 120.0, 1.0}, point, kNoFloor);
    EXPECT_LT(roughness(data), 0.6 * roughness(before));
    // Smoothing level ground, at the border of the grid too, leaves it level.
    const ElevationData level = MakeElevation(20, 20, 10.0, 10.0, [](int, int) { return 77; });
    EXPECT_EQ(Worked(level, {BrushKind::Smooth, 500.0, 1.0}, {0.0, 0.0, 0.0, 1.0}, kNoFloor).metres, level.metres);
    for (int i = 0; i < 200; ++i)
        data = Worked(data, {BrushKind::Flatten, 120.0, 0.5}, point, kNoFloor);
    for (int column = 12; column <= 28; ++column)
        EXPECT_NEAR(data.metres[Index(data, column, 19)], 123.5, 0.1) << column;
}

TEST(HeightBrush, StopsAtTheFloorAndLeavesWhatLiesBelowIt)
{
    ElevationData data = MakeElevation(9, 9, 10.0, 10.0, [](int x, int) { return x < 4 ? 50 : -50; });
    for (int i = 0; i < 100; ++i)
        data = Worked(data, {BrushKind::Lower, 300.0, 1.0}, {40.0, 40.0, 0.0, 0.1}, 0.0f);
    EXPECT_EQ(data.metres[Index(data, 3, 4)], 0.0f);
    EXPECT_EQ(data.metres[Index(data, 6, 4)], -50.0f);
}

TEST(HeightBrush, AreasHoldEveryTouchedCellAndLieInTheGrid)
{
    std::mt19937 random(12);
    std::uniform_real_distribution<double> any(-0.3, 1.3);
    const ElevationData data = MakeElevation(37, 23, 7.0, 11.0, [](int, int) { return 0; });
    for (int round = 0; round < 500; ++round) {
        const double radius = round % 10 ? 60.0 * std::fabs(any(random)) + 0.01 : 1e9;
        const BrushPoint point{37 * 7.0 * any(random), 23 * 11.0 * any(random), 0.0, 0.2};
        const GridArea area = BrushArea(data, point, radius);
        ASSERT_TRUE(area.left >= 0 && area.top >= 0 && area.right <= 37 && area.bottom <= 23) << round;
        for (int row = 0; row < 23; ++row) {
            for (int column = 0; column < 37; ++column) {
                const bool touched = std::hypot(column * 7.0 - point.x, row * 11.0 - point.z) < radius * 0.999;
                const bool inside = column >= area.left && column < area.right && row >= area.top && row < area.bottom;
                ASSERT_TRUE(inside || !touched) << round;
            }
        }
        // No more than the square around the circle.
        const double most = (2.0 * radius / 7.0 + 1.0) * (2.0 * radius / 11.0 + 1.0);
        ASSERT_TRUE(area.IsEmpty() || (area.right - area.left) * (area.bottom - area.top) <= most) << round;
    }
}

/// A stroke of random dabs, also over the border of the grid. \return what it reported to change
GridArea Stroke(ElevationData& data, HeightHistory& history, std::mt19937& random)
{
    std::uniform_real_distribution<double> any(-0.1, 1.1);
    GridArea touched;
    history.Begin();
    for (int dab = 0; dab < 6; ++dab) {
        const BrushPoint point{data.width * any(random), data.height * any(random), 5.0, 0.1};
        const GridArea area = BrushArea(data, point, 9.0);
        history.Keep(data, area);
        Brush(data, area, {static_cast<BrushKind>(dab % 4), 9.0, 1.0}, point, kNoFloor);
        touched = Union(touched, area);
    }
    history.End(data);
    return touched;
}

/// Whether all differences between two grids lie in an area.
bool DifferWithin(const ElevationData& a, const ElevationData& b, const GridArea& area)
{
    for (int row = 0; row < a.height; ++row) {
        for (int column = 0; column < a.width; ++column) {
            const bool inside = column >= area.left && column < area.right && row >= area.top && row < area.bottom;
            if (!inside && a.metres[Index(a, column, row)] != b.metres[Index(b, column, row)])
                return false;
        }
    }
    return true;
}

TEST(HeightHistory, UndoesAndRedoesBitForBit)
{
    std::mt19937 random(21);
    ElevationData data = RoughElevation(4, 101, 77, 1.0, 1.0);
    HeightHistory history;
    std::vector<ElevationData> states{data};
    std::vector<std::uint64_t> numbers{history.State()};
    std::size_t at = 0;
    for (int move = 0; move < 400; ++move) {
        const ElevationData before = data;
        GridArea changed;
        const auto kind = random() % 3;
        if (kind == 0) {
            changed = Stroke(data, history, random);
            states.resize(++at);
            states.push_back(data);
            numbers.resize(at);
            numbers.push_back(history.State());
        } else if (kind == 1) {
            EXPECT_EQ(history.CanUndo(), at > 0);
            changed = history.Undo(data);
            EXPECT_EQ(changed.IsEmpty(), at == 0);
            at -= at > 0 ? 1 : 0;
        } else {
            EXPECT_EQ(history.CanRedo(), at + 1 < states.size());
            changed = history.Redo(data);
            at += at + 1 < states.size() ? 1 : 0;
        }
        ASSERT_EQ(std::memcmp(data.metres.data(), states[at].metres.data(), data.metres.size() * sizeof(float)), 0);
        ASSERT_EQ(history.State(), numbers[at]);
        ASSERT_TRUE(DifferWithin(before, data, changed)) << move;
    }
    EXPECT_EQ(std::set<std::uint64_t>(numbers.begin(), numbers.end()).size(), numbers.size());
}

TEST(HeightHistory, ForgetsTheOldestStrokesAndThoseThatChangedNothing)
{
    ElevationData data = MakeElevation(320, 320, 1.0, 1.0, [](int, int) { return 0; });
    constexpr std::size_t kTile = 32 * 32 * sizeof(float);
    HeightHistory history(10 * kTile);
    const auto stroke = [&](int tiles, float height) {
        history.Begin();
        const GridArea area{0, 0, 32 * tiles, 32};
        history.Keep(data, area);
        for (int column = 0; column < 32 * tiles; ++column)
            data.metres[Index(data, column, 5)] = height;
        history.End(data);
    };
    for (int i = 1; i <= 8; ++i)
        stroke(3, static_cast<float>(i));
    stroke(3, 8.0f);  // as it is already
    const std::uint64_t youngest = history.State();
    int undone = 0;
    for (; history.CanUndo(); ++undone)
        history.Undo(data);
    EXPECT_EQ(undone, 3);
    EXPECT_EQ(data.metres[Index(data, 40, 5)], 5.0f);
    while (history.CanRedo())
        history.Redo(data);
    EXPECT_EQ(history.State(), youngest);
    EXPECT_EQ(data.metres[Index(data, 40, 5)], 8.0f);
    stroke(10, 20.0f);
    stroke(10, 30.0f);
    EXPECT_TRUE(history.CanUndo());
    history.Undo(data);
    EXPECT_EQ(data.metres[Index(data, 300, 5)], 20.0f);
    EXPECT_FALSE(history.CanUndo());
    // A new stroke ends what could be repeated, and its room is free again.
    stroke(1, 1.0f);
    EXPECT_FALSE(history.CanRedo());
    for (int i = 2; i <= 9; ++i)
        stroke(1, static_cast<float>(i));
    undone = 0;
    for (; history.CanUndo(); ++undone)
        history.Undo(data);
    EXPECT_EQ(undone, 9);
}

}  // namespace
}  // namespace tessara
