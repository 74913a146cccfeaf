#include "textures/elevation_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

/// A grid whose element (x, y) holds 10 y + x.
class ElevationGridTest : public testing::Test {
protected:
    ElevationGridTest()
    {
        grid.SetWidth(4);
        grid.SetHeight(3);
        EXPECT_TRUE(grid.Allocate(nullptr));
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 4; ++x)
                grid.ElementAt(x, y)->SetValue(static_cast<float>(10 * y + x));
    }
    ElevationGrid grid;
};

TEST_F(ElevationGridTest, ElementsAreRowMajorAndBounded)
{
    ElevationElement* first = nullptr;
    ASSERT_TRUE(grid.GetGrid(&first));
    EXPECT_EQ(first[1 + 2 * 4].value, 21.0f);
    EXPECT_EQ(grid.ElementAt(3, 2), first + 11);
    const std::pair<int, int> outside[] = {{4, 0}, {0, 3}, {-1, 0}, {0, -1}};
    for (const auto& [x, y] : outside) {
        EXPECT_EQ(grid.ElementAt(x, y), nullptr);
        ElevationElement element;
        element.value = 5.0f;
        EXPECT_FALSE(grid.GetElement(x, y, element));
        EXPECT_EQ(element.value, 5.0f);
    }
    EXPECT_EQ(grid.GetByteSize(), 4 * 3 * 16);
}

TEST_F(ElevationGridTest, ANewSizeReachesNoElementsBeforeAllocate)
{
    grid.SetWidth(1000);
    EXPECT_EQ(grid.ElementAt(999, 0), nullptr);
    grid.ClearElements();
    EXPECT_TRUE(grid.Allocate(nullptr));
    EXPECT_EQ(grid.ElementAt(999, 2)->value, 0.0f);
}

TEST_F(ElevationGridTest, AllocateRefusesAnEmptySizeAndKeepsTheOldArray)
{
    grid.SetHeight(0);
    EXPECT_FALSE(grid.Allocate(nullptr));
    grid.SetHeight(3);
    EXPECT_EQ(grid.ElementAt(1, 1)->value, 11.0f);
}

TEST_F(ElevationGridTest, AnExternalArrayIsClearedAndNeverFreed)
{
    std::vector<ElevationElement> external(12);
    for (ElevationElement& element : external)
        element.value = 3.0f;
    EXPECT_TRUE(grid.Allocate(external.data()));
    EXPECT_EQ(external[11].value, 0.0f);
    EXPECT_TRUE(grid.Free());
    EXPECT_EQ(grid.ElementAt(0, 0), external.data());
    EXPECT_TRUE(grid.Allocate(nullptr));  // drops the external array and owns its own
    EXPECT_NE(grid.ElementAt(0, 0), external.data());
}

TEST_F(ElevationGridTest, ScanRangeReadsTheRectangleAlone)
{
    float low = 0;
    float high = 0;
    grid.ScanRange(1, 2, 1, 3);
    grid.GetElevationRange(&low, &high);
    EXPECT_EQ(low, 11.0f);
    EXPECT_EQ(high, 12.0f);
    grid.ScanRange(2, 3, 3, 4);
    grid.GetElevationRange(&low, &high);
    EXPECT_EQ(low, high);
}

TEST_F(ElevationGridTest, NormaliseUsesTheStoredRangeWithoutClamping)
{
    grid.SetElevationRange(10.0f, 20.0f);
    const std::pair<float, double> cases[] = {{15.0f, 0.5}, {10.0f, 0.0}, {20.0f, 1.0}, {25.0f, 1.5}, {5.0f, -0.5}};
    for (const auto& [value, normal] : cases) {
        EXPECT_EQ(grid.Normalise(value), normal);
        auto back = static_cast<float>(normal);
        EXPECT_TRUE(grid.Denormalise(&back, 10.0f, 20.0f));
        EXPECT_EQ(back, value);
    }
    EXPECT_EQ(grid.Normalise(13.0f), 0.3);  // in double precision, unrounded
    grid.NormaliseRange(1, 2, 0, 4, false);
    EXPECT_EQ(grid.ElementAt(2, 1)->value, 0.2f);
    EXPECT_EQ(grid.ElementAt(2, 0)->value, 2.0f);
    grid.NormaliseRange(2, 3, 0, 4, true);
    EXPECT_EQ(grid.ElementAt(0, 2)->value, 0.0f);
    EXPECT_EQ(grid.ElementAt(3, 2)->value, 1.0f);
}

TEST_F(ElevationGridTest, AFlatRangeMakesNotANumbers)
{
    grid.ClearElements();
    grid.NormaliseRange(0, 3, 0, 4, true);
    EXPECT_TRUE(std::isnan(grid.ElementAt(2, 1)->value));
}

TEST(ElevationGrid, WithoutArrayGivesNothing)
{
    ElevationGrid grid;
    ElevationElement* first = nullptr;
    EXPECT_FALSE(grid.GetGrid(&first));
    EXPECT_EQ(grid.ElementAt(0, 0), nullptr);
}

}  // namespace
