#include "app/viewer/camera/camera_controller.h"
#include "app/viewer/test_ground.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace tessara {
namespace {

using test::CameraOverGround;
using test::RoughElevation;

/// How far from a point of the picture a place appears, in pixels.
double PixelsAway(const Camera& camera, const Vector3& place, const PicturePoint& point)
{
    double x = 0.0;
    double y = 0.0;
    return camera.Project(place, x, y) ? std::hypot(x - point.x, y - point.y) : 1e9;
}

/// Checks what holds for every camera.
void ExpectSound(const CameraOverGround& view, std::mt19937& random, const char* after)
{
    const Vector3 eye = view.controller.Position();
    ASSERT_TRUE(std::isfinite(Length(eye))) << after;
    ASSERT_LT(Length(eye), 1e5 * view.Size()) << after;
    ASSERT_EQ(Length(view.camera->Position() - eye), 0.0) << after;
    ASSERT_GE(view.controller.Azimuth(), 0.0) << after;
    ASSERT_LT(view.controller.Azimuth(), 360.0) << after;
    ASSERT_GE(view.controller.Tilt(), -80.0) << after;
    ASSERT_LE(view.controller.Tilt(), 90.0) << after;
    if (view.model.Contains(eye.x, eye.z)) {
        ASSERT_GT(view.controller.HeightAboveGround(), 1e-4 * view.Size()) << after;
    }
    TerrainFrustum* frustum = nullptr;
    view.camera->GetFrustum(&frustum);
    ASSERT_GT(frustum->Near, 0.0f) << after;
    ASSERT_GT(frustum->Far, frustum->Near) << after;
    // Whatever of the ground is in the picture lies between the near and the far plane.
    std::uniform_int_distribution<int> column(0, view.data.width - 1);
    std::uniform_int_distribution<int> row(0, view.data.height - 1);
    for (int i = 0; i < 100; ++i) {
        const int x = column(random);
        const int z = row(random);
        const auto index = static_cast<std::size_t>(x + z * view.data.width);
        const Vector3 place = view.frame.FromGrid(x, z, static_cast<double>(view.data.metres[index]));
        double px = 0.0;
        double py = 0.0;
        if (!view.camera->Project(place, px, py) || px < 0.0 || py < 0.0 || px > view.camera->Width() ||
            py > view.camera->Height())
            continue;
        const double depth = Dot(place - eye, view.camera->Forward());
        // A point hidden in the fold right before the eye may be cut off.
        if (depth > 1e-4 * view.Size()) {
            ASSERT_LE(static_cast<double>(frustum->Near), depth) << after;
        }
        ASSERT_GE(static_cast<double>(frustum->Far), depth) << after;
    }
}

TEST(CameraController, TheGrabbedPointStaysUnderTheMouse)
{
    std::mt19937 random(1);
    std::normal_distribution<double> hand(0.0, 12.0);
    for (const bool orbit : {true, false}) {
        int kept = 0;
        int moves = 0;
        for (unsigned round = 0; round < 400; ++round) {
            CameraOverGround view(RoughElevation(round, 65, 40, 25.0, 30.0), 0.5 + round % 3);
            view.controller.Resize(900, 600);
            view.PlaceAnywhere(random);
            PicturePoint mouse = view.AnyPoint(random);
            const auto grabbed = view.controller.PointAt(mouse);
            if (!grabbed)
                continue;
            view.controller.Grab(mouse);
            for (int move = 0; move < 12; ++move, ++moves) {
                mouse = {mouse.x + hand(random), mouse.y + hand(random)};
                orbit ? view.controller.OrbitTo(mouse) : view.controller.PanTo(mouse);
                kept += PixelsAway(*view.camera, *grabbed, mouse) < 0.1 ? 1 : 0;
            }
            ExpectSound(view, random, orbit ? "orbit" : "pan");
        }
        ASSERT_GT(moves, 1200);
        EXPECT_EQ(kept, moves) << (orbit ? "orbit" : "pan") << " of " << moves;
    }
}

TEST(CameraController, WheelStepsComeNearerToWhatIsUnderTheMouse)
{
    std::mt19937 random(2);
    int kept = 0;
    int zooms = 0;
    for (unsigned round = 0; round < 300; ++round) {
        CameraOverGround view(RoughElevation(round, 65, 40, 25.0, 30.0));
        view.controller.Resize(900, 600);
        view.PlaceAnywhere(random);
        const PicturePoint mouse = view.AnyPoint(random);
        const auto target = view.controller.PointAt(mouse);
        if (!target)
            continue;
        double distance = Length(*target - view.controller.Position());
        for (int step = 0; step < 60; ++step, ++zooms) {
            view.controller.Zoom(mouse, 1.0);
            const double now = Length(*target - view.controller.Position());
            ASSERT_LE(now, distance * 1.0001) << round << " " << step;
            distance = now;
            kept += PixelsAway(*view.camera, *target, mouse) < 0.5 ? 1 : 0;
        }
        EXPECT_LT(distance, 0.01 * view.Size()) << round;
        for (const double steps : {-3.0, -1e6, 1e6})
            view.controller.Zoom(mouse, steps);
        ExpectSound(view, random, "zoom");
    }
    ASSERT_GT(zooms, 3000);
    EXPECT_EQ(kept, zooms) << zooms;
}

TEST(CameraController, NoSequenceOfMovesLosesTheTerrainOrGetsUnderIt)
{
    std::uniform_real_distribution<double> any(0.0, 1.0);
    for (unsigned seed = 0; seed < 12; ++seed) {
        std::mt19937 random(seed);
        const int width = seed == 0 ? 2 : 20 + static_cast<int>(14 * seed * seed);
        CameraOverGround view(seed == 1 ? MakeElevation(30, 20, 10.0, 10.0, [](int, int) { return -3.5; })
                                        : RoughElevation(seed, width, 33, 0.1 * width, 25.0),
                              0.1 + 9.0 * any(random));
        CameraController& controller = view.controller;
        for (int move = 0; move < 1000; ++move) {
            const PicturePoint mouse = view.AnyPoint(random);
            const double one = 2.0 * any(random) - 1.0;
            const double other = 2.0 * any(random) - 1.0;
            const double draw = 15.0 * any(random);
            const std::function<void()> moves[] = {
                [&] { controller.Grab(mouse); },
                [&] { controller.OrbitTo(mouse); },
                [&] { controller.PanTo(mouse); },
                [&] { controller.Zoom(mouse, 8.0 * one); },
                [&] { controller.Step(one, other, one * other); },
                [&] { controller.Step(0.0, 0.0, 1.0); },
                [&] { controller.Look(400.0 * one, 100.0 * other); },
                [&] { controller.ShowAll(); },
                [&] { controller.NorthUp(); },
                [&] { controller.FromTop(); },
                [&] { controller.GoTo(any(random) * view.frame.Width(), any(random) * view.frame.Depth()); },
                [&] { controller.Resize(1 + static_cast<int>(5000 * any(random) * any(random)), 1 + move % 3000); },
                [&] { view.PlaceAnywhere(random); },
                [&] {
                    for (int frame = 0; frame < 20; ++frame)
                        controller.Fly(
                            {static_cast<int>(2.9 * one), static_cast<int>(2.9 * other), move % 3 - 1, move % 2 == 0},
                            0.3);
                },
            };
            const std::size_t kind = std::min<std::size_t>(std::size(moves) - 1, static_cast<std::size_t>(draw));
            moves[kind]();
            ExpectSound(view, random, std::to_string(kind).c_str());
            if (HasFatalFailure())
                return;
        }
    }
}

TEST(CameraController, ShowsAllAtEverySizeOfThePicture)
{
    constexpr std::array<std::array<int, 2>, 6> kSizes = {
        {{1, 1}, {900, 600}, {40, 1500}, {3000, 50}, {7, 5}, {4000, 4000}}};
    CameraOverGround view(RoughElevation(3, 120, 70, 30.0, 30.0), 2.0);
    const Outline outline = OutlineOf(view.data, SpanOf(view.data), view.frame);
    for (const auto& [width, height] : kSizes) {
        view.controller.Resize(width, height);
        for (const Vector3& point : outline.points) {
            double x = 0.0;
            double y = 0.0;
            ASSERT_TRUE(view.camera->Project(point, x, y));
            ASSERT_TRUE(x >= 0.0 && x <= width && y >= 0.0 && y <= height) << width << " x " << height;
        }
    }
    // Whoever has moved the camera keeps it where it is.
    view.controller.Zoom({2000.0, 2000.0}, 3.0);
    const Vector3 before = view.controller.Position();
    view.controller.Resize(900, 600);
    EXPECT_EQ(Length(view.controller.Position() - before), 0.0);
}

TEST(CameraController, TurnsAndTravelsKeepTheFocusAndTheDistance)
{
    std::mt19937 random(4);
    CameraOverGround view(RoughElevation(8, 120, 70, 30.0, 30.0));
    view.controller.Resize(900, 600);
    const PicturePoint middle{450.0, 300.0};
    for (int round = 0; round < 50; ++round) {
        view.controller.ShowAll();
        view.controller.Zoom(view.AnyPoint(random), 4.0 * round / 50);
        Vector3 focus = view.controller.Focus();
        view.controller.NorthUp();
        EXPECT_EQ(view.controller.Azimuth(), 0.0);
        EXPECT_LT(PixelsAway(*view.camera, focus, middle), 0.01);
        focus = view.controller.Focus();
        const double distance = Length(focus - view.controller.Position());
        view.controller.FromTop();
        EXPECT_EQ(view.controller.Tilt(), 90.0);
        EXPECT_LT(PixelsAway(*view.camera, focus, middle), 0.01);
        EXPECT_NEAR(Length(focus - view.controller.Position()), distance, 1e-6 * distance);
        // East is to the right of north.
        double x = 0.0;
        double y = 0.0;
        ASSERT_TRUE(view.camera->Project(focus + Vector3{100.0, 0.0, 0.0}, x, y));
        EXPECT_GT(x, 450.0);
        EXPECT_NEAR(y, 300.0, 0.01);
        view.controller.GoTo(800.0, 600.0);
        EXPECT_LT(PixelsAway(*view.camera, {800.0, view.model.HeightAt(800.0, 600.0), 600.0}, middle), 0.01);
        EXPECT_NEAR(view.controller.Position().x, 800.0, 1.0);
    }
}

TEST(CameraController, FliesFasterHigherUpAndFindsBack)
{
    CameraOverGround view(MakeElevation(50, 50, 20.0, 20.0, [](int, int) { return 7; }));
    const auto distance = [&](double above, bool fast) {
        view.controller.Place({500.0, view.model.HeightAt(500.0, 500.0) + above, 500.0}, 90.0, 0.0);
        view.controller.Fly({1, 0, 0, fast}, 0.1);
        return view.controller.Position().x - 500.0;
    };
    EXPECT_GT(distance(10.0, false), 0.1);
    EXPECT_NEAR(distance(100.0, false) / distance(10.0, false), 10.0, 0.01);
    EXPECT_GT(distance(10.0, true), 2.0 * distance(10.0, false));
    // From beside the terrain, below its edge, it is a matter of seconds.
    view.controller.Place({-2500.0, 1.0, 500.0}, 90.0, 0.0);
    int frames = 0;
    for (; view.controller.Position().x < 0.0 && frames < 3000; ++frames)
        view.controller.Fly({1, 0, 0, false}, 1.0 / 60.0);
    EXPECT_LT(frames, 60 * 25);
    // One that is far out already doesn't jump.
    view.controller.Place({-12000.0, 9000.0, 500.0}, 270.0, 0.0);
    view.controller.Fly({1, 0, 0, false}, 1.0);
    EXPECT_EQ(view.controller.Position().x, -12000.0);
}

TEST(CameraController, StaysOverTheSameGroundWhenHeightsAreScaled)
{
    CameraOverGround view(RoughElevation(6, 60, 60, 30.0, 30.0));
    view.controller.Place({700.0, view.model.HeightAt(700.0, 900.0) + 55.0, 900.0}, 10.0, 20.0);
    double before = 1.0;
    for (const double exaggeration : {3.0, 0.1, 10.0, 1.0}) {
        view.frame.SetExaggeration(exaggeration);
        view.controller.ScaleHeights(exaggeration / std::exchange(before, exaggeration));
        EXPECT_NEAR(view.controller.HeightAboveGround(), 55.0, 1e-6) << exaggeration;
    }
    // Ground that rises lifts the camera, and nothing that isn't finite moves it.
    std::fill(view.data.metres.begin(), view.data.metres.end(), view.data.maximum);
    view.controller.Place({700.0, 0.0, 900.0}, 10.0, 20.0);
    const Vector3 lifted = view.controller.Position();
    EXPECT_GT(view.controller.HeightAboveGround(), 0.0);
    view.controller.Place({700.0, std::nan(""), 900.0}, 10.0, 20.0);
    view.controller.Place({700.0, 5000.0, 900.0}, INFINITY, 20.0);
    EXPECT_EQ(Length(view.controller.Position() - lifted), 0.0);
}

}  // namespace
}  // namespace tessara
