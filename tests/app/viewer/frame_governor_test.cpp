#include "app/viewer/picture/frame_governor.h"

#include <gtest/gtest.h>

#include <functional>

namespace tessara {
namespace {

constexpr double kBudget = 0.026;

/// Draws frames that take as long as a machine needs for them. \return how often the scale changed
int Draw(FrameGovernor& governor, int frames, const std::function<double(double scale)>& machine)
{
    int changes = 0;
    for (int frame = 0; frame < frames; ++frame) {
        const double scale = governor.Scale();
        governor.Saw(machine(scale));
        changes += governor.Scale() != scale ? 1 : 0;
    }
    return changes;
}

/// \param fixed seconds of a frame whatever its size \param pixels seconds for all of the window's pixels
std::function<double(double)> Machine(double fixed, double pixels)
{
    return [=](double scale) { return fixed + pixels * scale * scale; };
}

TEST(FrameGovernor, FindsTheFinestPictureThatMovesQuickly)
{
    struct Case {
        double fixed, pixels;
        double least, most;  // scale that suits
    };
    for (const Case& each : {Case{0.002, 0.003, 1.0, 1.0},
                             {0.002, 0.022, 1.0, 1.0},
                             {0.006, 0.030, 0.64, 0.8},
                             {0.006, 0.060, 0.5, 0.5},
                             {0.006, 0.300, 0.4, 0.4}}) {
        FrameGovernor governor(kBudget);
        // It gets there within a few frames and stays.
        EXPECT_LE(Draw(governor, 10, Machine(each.fixed, each.pixels)), 3) << each.pixels;
        Draw(governor, 200, Machine(each.fixed, each.pixels));
        EXPECT_GE(governor.Scale(), each.least) << each.pixels;
        EXPECT_LE(governor.Scale(), each.most) << each.pixels;
        EXPECT_EQ(Draw(governor, 1000, Machine(each.fixed, each.pixels)), 0) << each.pixels;
    }
}

TEST(FrameGovernor, LeavesThePictureFineWhereThatIsNotWhatTakesTheTime)
{
    FrameGovernor governor(kBudget);
    Draw(governor, 10, Machine(0.050, 0.002));
    EXPECT_EQ(governor.Scale(), 1.0);
    EXPECT_EQ(Draw(governor, 1000, Machine(0.050, 0.002)), 0);
    // Another movement may be another matter.
    governor.Rest();
    Draw(governor, 10, Machine(0.006, 0.060));
    EXPECT_EQ(governor.Scale(), 0.5);
}

TEST(FrameGovernor, IgnoresSingleSlowFramesAndGoesBackOnceThereIsTime)
{
    FrameGovernor governor(kBudget);
    int frame = 0;
    EXPECT_EQ(Draw(governor, 600, [&](double) { return ++frame % 7 == 0 ? 0.2 : 0.012; }), 0);
    EXPECT_EQ(governor.Scale(), 1.0);

    Draw(governor, 20, Machine(0.006, 0.060));
    EXPECT_LT(governor.Scale(), 1.0);
    Draw(governor, 200, Machine(0.006, 0.006));
    EXPECT_EQ(governor.Scale(), 1.0);
}

TEST(FrameGovernor, DoesNotSwingWithALoadThatComesAndGoes)
{
    FrameGovernor governor(kBudget);
    int frame = 0;
    const auto machine = [&](double scale) { return (++frame / 30 % 2 == 0 ? 0.015 : 0.030) * scale * scale; };
    Draw(governor, 200, machine);
    EXPECT_LE(Draw(governor, 1800, machine), 24);  // of 60 changes of the load
}

}  // namespace
}  // namespace tessara
