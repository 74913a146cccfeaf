#include "app/view/height_colors.h"
#include "app/view/palettes.h"
#include "app/viewer/picture/map_view.h"
#include "app/viewer/picture/view_text.h"
#include "app/viewer/test_ground.h"
#include "app/viewer/work/kept_settings.h"
#include "app/viewer/work/typed_number.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace tessara {
namespace {

using test::CameraOverGround;

TEST(ViewSettings, ComeBackAsTheyWereInEveryLocale)
{
    KeptSettings kept;
    kept.view.errorPixels = 4.25;
    kept.view.exaggeration = 2.5;
    kept.view.fill = FillMode::Points;
    kept.view.vertexColors = false;
    kept.view.sunAzimuth = 12.5;
    kept.view.fog = 0.0;
    kept.view.realTime = true;
    kept.view.brush = {BrushKind::Flatten, 1234.5, 0.25};
    kept.view.ramp = "desert";
    kept.window = {120, 40, 1000, 700, true, 250, 333};
    for (int i = 0; i < 12; ++i)
        kept.recent.Add("/data/Höhen, " + std::to_string(i) + "=x.tif");
    for (const char* locale : {"C", "de_DE.UTF-8", "de_DE"}) {
        const std::string before = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, locale);
        const SettingsMap stored = Store(kept);
        const KeptSettings restored = Restore(stored);
        std::setlocale(LC_ALL, before.c_str());
        EXPECT_EQ(Store(restored), stored);
        EXPECT_EQ(restored.view.errorPixels, 4.25);
        EXPECT_EQ(restored.view.brush.radius, 1234.5);
        EXPECT_EQ(restored.view.brush.kind, BrushKind::Flatten);
        EXPECT_EQ(restored.view.ramp, "desert");
        EXPECT_EQ(restored.window.mapHeight, 333);
        ASSERT_EQ(restored.recent.Paths().size(), RecentFiles::kMost);
        EXPECT_EQ(restored.recent.Paths(), kept.recent.Paths());
        EXPECT_EQ(restored.recent.Paths().front(), "/data/Höhen, 11=x.tif");
    }
}

TEST(ViewSettings, HostileTextsGiveDefaultsOrTheNearestValue)
{
    const ViewSettings normal;
    for (const char* text : {"", " ", "abc", "1,5", "2x", "nan", "-nan", "0x10", "--1", "\xff\xfe", "1.5.2"}) {
        SettingsMap stored = Store({});
        for (auto& [name, value] : stored)
            value = text;
        const KeptSettings restored = Restore(stored);
        EXPECT_EQ(restored.view.exaggeration, normal.exaggeration) << text;
        EXPECT_EQ(restored.view.brush.radius, normal.brush.radius) << text;
        EXPECT_EQ(restored.view.vertexColors, normal.vertexColors) << text;
        EXPECT_EQ(restored.view.fill, FillMode::Filled) << text;
        EXPECT_EQ(restored.view.ramp, "natural") << text;
        EXPECT_EQ(restored.window.width, WindowPlace().width) << text;
    }
    struct Case {
        const char* name;
        const char* text;
        double ViewSettings::*value;
        double expected;
    };
    for (const Case& each : {Case{"View/Exaggeration", "1e9", &ViewSettings::exaggeration, 10.0},
                             Case{"View/Exaggeration", "-inf", &ViewSettings::exaggeration, 0.1},
                             Case{"View/ErrorPixels", "0", &ViewSettings::errorPixels, 0.25},
                             Case{"Light/SunHeight", "-90", &ViewSettings::sunHeight, 1.0},
                             Case{"Light/Fog", "inf", &ViewSettings::fog, 1.0}})
        EXPECT_EQ(Restore({{each.name, each.text}}).view.*each.value, each.expected) << each.name << each.text;
    EXPECT_EQ(Restore({{"Window/Width", "5"}}).window.width, 400);
    EXPECT_EQ(Restore({}).recent.Paths().size(), 0u);
}

TEST(TypedNumber, TakesNumbersAloneAndSaysWhy)
{
    struct Case {
        const char* text;
        std::optional<double> value;
        const char* reason;
    };
    for (const Case& each :
         {Case{"320", 320.0, ""}, Case{" -1.5e2 ", -150.0, ""}, Case{"+7", 7.0, ""}, Case{"1000", 1000.0, ""},
          Case{"", {}, "A number is wanted here."}, Case{"abc", {}, "“abc” is no number."},
          Case{"nan", {}, "“nan” is no number."}, Case{"inf", {}, "“inf” is no number."},
          Case{"+-3", {}, "“+-3” is no number."}, Case{"12 m", {}, "“12 m” is no number."},
          Case{"1000,5", {}, "“1000,5” is no number; write 1000.5."},
          Case{"1000.1", {}, "Only -1000 to 1000 will do."}}) {
        const TypedNumber typed = ReadTyped(each.text, -1000.0, 1000.0);
        EXPECT_EQ(typed.value, each.value) << each.text;
        EXPECT_EQ(typed.reason, each.reason) << each.text;
    }
}

TEST(RecentFiles, HoldEachOnceTheYoungestFirst)
{
    RecentFiles recent;
    for (const char* path : {"a", "b", "c", "b"})
        recent.Add(path);
    EXPECT_EQ(recent.Paths(), (std::vector<std::string>{"b", "c", "a"}));
    recent.Add(recent.Paths()[2]);
    EXPECT_EQ(recent.Paths(), (std::vector<std::string>{"a", "b", "c"}));
    recent.Remove(recent.Paths()[0]);
    EXPECT_EQ(recent.Paths(), (std::vector<std::string>{"b", "c"}));
}

TEST(ViewText, LengthsHeightsAndCounts)
{
    struct Case {
        std::string text;
        const char* expected;
    };
    for (const Case& each :
         {Case{LengthText(0.0), "0 m"}, Case{LengthText(-0.001), "0 m"}, Case{LengthText(250.0), "250 m"},
          Case{LengthText(999.994), "999.99 m"}, Case{LengthText(999.999), "1 km"},
          Case{LengthText(12500.0), "12.5 km"}, Case{LengthText(-1500.0), "-1.5 km"}, Case{HeightText(-0.04), "0.0 m"},
          Case{HeightText(-0.06), "-0.1 m"}, Case{HeightText(1234.56), "1234.6 m"}, Case{SlopeText(45.0), "45.0°"},
          Case{CountText(0), "0"}, Case{CountText(999), "999"}, Case{CountText(1234567), "1\u202F234\u202F567"},
          Case{CountText(std::numeric_limits<std::uint64_t>::max()),
               "18\u202F446\u202F744\u202F073\u202F709\u202F551\u202F615"}})
        EXPECT_EQ(each.text, each.expected);
    ElevationData data;
    EXPECT_EQ(HeightText(data, 12.0), "12.0 m");
    data.heightUnit = 0.3048;
    data.heightUnitName = "ft";
    EXPECT_EQ(HeightText(data, 304.8), "1000.0 ft (304.8 m)");
}

TEST(ViewText, PlacesInTheUnitsOfTheFile)
{
    ElevationData data = MakeElevation(101, 51, 30.0, 20.0, [](int, int) { return 0; });
    EXPECT_EQ(PlaceText(data, 300.0, 100.0), "300 m E, 900 m N");
    data.georeferenced = true;
    data.originX = 400000.0;
    data.originY = 5500000.0;
    data.stepX = 30.0;
    data.stepY = -20.0;
    EXPECT_EQ(PlaceText(data, 300.0, 100.0), "400300 E  5499900 N   (300 m E, 900 m N)");
    data.geographic = true;
    data.originX = -0.5;
    data.originY = 0.01;
    data.stepX = 0.01;
    data.stepY = -0.01;
    EXPECT_EQ(PlaceText(data, 300.0, 200.0), "0.090° S  0.400° W   (300 m E, 800 m N)");
    EXPECT_EQ(PlaceText(data, 3000.0, 0.0), "0.010° N  0.500° E   (3 km E, 1 km N)");
}

TEST(ViewText, ScaleBarsAndLegendsUseRoundNumbers)
{
    for (const auto& [most, expected] : {std::pair{1.0, 1.0},
                                         {1.99, 1.0},
                                         {2.0, 2.0},
                                         {4.9, 2.0},
                                         {5.0, 5.0},
                                         {999.0, 500.0},
                                         {1000.0, 1000.0},
                                         {0.05, 0.05},
                                         {0.0199, 0.01},
                                         {7e5, 5e5}})
        EXPECT_NEAR(RoundLength(most), expected, 1e-12 * expected) << most;
    std::mt19937 random(6);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    for (int round = 0; round < 3000; ++round) {
        const double low = std::pow(10.0, 6.0 * any(random)) * any(random);
        const double high = round % 7 ? low + std::pow(10.0, 2.0 + 4.0 * any(random)) : std::round(low) + 10.0;
        const int most = 2 + round % 11;
        const auto marks = LegendMarks(low, high, most);
        ASSERT_FALSE(marks.empty()) << low << " " << high << " " << most;
        ASSERT_LE(marks.size(), static_cast<std::size_t>(most)) << low << " " << high;
        const double step = marks.size() > 1 ? marks[1] - marks[0] : 0.0;
        for (std::size_t i = 0; i < marks.size(); ++i) {
            ASSERT_GE(marks[i], low - 1e-6 * (high - low));
            ASSERT_LE(marks[i], high + 1e-6 * (high - low));
            ASSERT_NEAR(marks[i], marks[0] + static_cast<double>(i) * step, 1e-6 * (high - low));
        }
    }
    EXPECT_EQ(LegendMarks(0.0, 100.0, 5), (std::vector<double>{0.0, 50.0, 100.0}));
    EXPECT_EQ(LegendMarks(-120.0, 130.0, 6), (std::vector<double>{-100.0, -50.0, 0.0, 50.0, 100.0}));
    EXPECT_LE(LegendMarks(1e9, 1e9 + 1e-6, 6).size(), 6u);
    EXPECT_EQ(LegendMarks(5.0, 5.0, 6).size(), 1u);
    EXPECT_EQ(LegendMarks(-1e308, 1.7e308, 6).size(), 1u);
}

TEST(HeightColors, SpreadARampOverTheirRange)
{
    ElevationPalette palette;
    ColorPalette(palette, 0.0, 1020.0, {"grey", 204.0, 816.0});  // an entry is 4 m
    const auto ramp = MakePalette("grey");
    for (std::int16_t i = 0; i < 256; ++i) {
        const double share = std::clamp((4.0 * i - 204.0) / 612.0, 0.0, 1.0);
        EXPECT_EQ(palette.GetRed(i), ramp->GetRed(static_cast<std::int16_t>(std::lround(255.0 * share)))) << i;
    }
    ColorPalette(palette, 0.0, 1020.0, {"grey", 500.0, 500.0});  // a step
    EXPECT_EQ(palette.GetRed(124), ramp->GetRed(0));
    EXPECT_EQ(palette.GetRed(126), ramp->GetRed(255));
}

TEST(MapView, PlacesOfPaneAndGroundBelongTogether)
{
    for (const auto& [width, height, across, down] : {std::array{300.0, 200.0, 3000.0, 1000.0},
                                                      {50.0, 700.0, 10.0, 90.0},
                                                      {4.0, 4.0, 1e5, 1e5},
                                                      {200.0, 200.0, 1.0, 1.0}}) {
        const MapView map(static_cast<int>(width), static_cast<int>(height), across, down, 8);
        const auto frame = map.Frame();
        EXPECT_NEAR((frame[2] - frame[0]) * map.MetresPerPixel(), across, 1e-6 * across);
        EXPECT_NEAR((frame[3] - frame[1]) * map.MetresPerPixel(), down, 1e-6 * down);
        EXPECT_NEAR(frame[0] + frame[2], width, 1e-6);
        EXPECT_NEAR(frame[1] + frame[3], height, 1e-6);
        if (width > 20.0) {
            EXPECT_GE(std::min(frame[0], frame[1]), 8.0 - 1e-9);
            EXPECT_NEAR(std::min(frame[0], frame[1]), 8.0, 1e-9);
        }
        for (const auto& [x, z] : {std::pair{0.0, 0.0}, {across, down}, {0.3 * across, -0.1 * down}}) {
            const Vector3 ground = map.ToGround(map.ToPane(x, z));
            EXPECT_NEAR(ground.x, x, 1e-9 * across);
            EXPECT_NEAR(ground.z, z, 1e-9 * across);
        }
    }
}

TEST(MapView, TheConePointsWhereTheCameraLooks)
{
    CameraOverGround view(MakeElevation(60, 60, 20.0, 20.0, [](int, int) { return 0; }));
    view.controller.Resize(800, 400);
    for (const double azimuth : {0.0, 90.0, 200.0}) {
        view.controller.Place({600.0, 300.0, 600.0}, azimuth, 30.0);
        const auto cone = ViewCone(view.controller);
        EXPECT_EQ(cone[0].x, 600.0);
        EXPECT_EQ(cone[0].z, 600.0);
        // What appears at the picture's left and right border on the horizon lies on the cone's sides.
        for (const auto& [corner, pixel] : {std::pair{1, 0.0}, {2, 800.0}}) {
            const Vector3 side = Normalised(cone[static_cast<std::size_t>(corner)] - cone[0]);
            view.controller.Place({600.0, 300.0, 600.0}, azimuth, 0.0);
            double x = 0.0;
            double y = 0.0;
            ASSERT_TRUE(view.camera->Project(view.controller.Position() + side * 1000.0, x, y));
            EXPECT_NEAR(x, pixel, 1.0) << azimuth;
        }
    }
    view.controller.Place({600.0, 300.0, 600.0}, 0.0, 90.0);
    const auto cone = ViewCone(view.controller);
    EXPECT_GT(Length(cone[1] - cone[0]), 10.0);
}

}  // namespace
}  // namespace tessara
