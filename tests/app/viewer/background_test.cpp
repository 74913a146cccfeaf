#include "app/viewer/picture/background_light.h"
#include "app/viewer/terrain/terrain_loader.h"
#include "host/elevation/elevation_writer.h"
#include "host/test_elevation.h"
#include "samples/country/sample_terrain.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <random>
#include <thread>

namespace tessara {
namespace {

constexpr Vector3 kSun{-0.8, 0.6, 0.0};

ElevationData Slope(int side, int rise)
{
    return MakeElevation(side, side, 10.0, 10.0, [rise](int x, int) { return rise * x; });
}

/// Waits for another thread, without a bound: a test that hangs fails by its time limit.
template <class Condition>
void WaitFor(const Condition& condition)
{
    while (!condition())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

TEST(BackgroundLight, GivesTheLightOfTheLastOrder)
{
    std::atomic<int> calls{0};
    BackgroundLight light([&calls] { ++calls; });
    EXPECT_EQ(light.Take(), nullptr);
    EXPECT_FALSE(light.IsBusy());
    for (int rise = 0; rise < 20; ++rise)
        light.Follow(Slope(40 + rise, rise), {static_cast<std::uint64_t>(rise) + 1, 1.5, kSun});
    WaitFor([&] { return !light.IsBusy(); });
    const auto map = light.Take();
    ASSERT_NE(map, nullptr);
    const LightMap expected = MakeLightMap(Slope(59, 19), 1.5, kSun, BackgroundLight::kSide);
    EXPECT_EQ(map->width, 59);
    EXPECT_EQ(std::memcmp(map->texels.data(), expected.texels.data(), expected.texels.size() * sizeof(LightMap::Texel)),
              0);
    EXPECT_EQ(light.Take(), nullptr);
    WaitFor([&] { return calls.load() > 0; });
}

TEST(BackgroundLight, ForgetsWhatWasOrderedBefore)
{
    BackgroundLight light([] {});
    for (int round = 0; round < 30; ++round) {
        light.Follow(Slope(120, round), {static_cast<std::uint64_t>(round) + 1, 1.0, kSun});
        if (round % 3 == 0)
            WaitFor([&] { return !light.IsBusy(); });
        light.Begin({});
        EXPECT_EQ(light.Take(), nullptr);
    }
    WaitFor([&] { return !light.IsBusy(); });
    EXPECT_EQ(light.Take(), nullptr);
    light.Follow(Slope(30, 1), {1, 1.0, kSun});
    WaitFor([&] { return !light.IsBusy(); });
    EXPECT_EQ(light.Take()->width, 30);
}

TEST(BackgroundLight, CanEndAtAnyMoment)
{
    std::mt19937 random(3);
    for (int round = 0; round < 40; ++round) {
        std::atomic<int> calls{0};
        BackgroundLight light([&calls] { ++calls; });
        const auto orders = random() % 4;
        for (unsigned i = 0; i < orders; ++i) {
            light.Follow(Slope(20 + static_cast<int>(random() % 200), 1), {i + 1, 1.0, kSun});
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
            light.Take();
        }
    }
}

TEST(TerrainLoader, ReadsAFileAndItsLight)
{
    const test::ScratchFolder folder;
    const std::string path = folder / "slope.tif";
    const ElevationData data = Slope(70, 3);
    WriteElevationFile(data, path);
    ViewSettings settings;
    settings.exaggeration = 2.0;
    TerrainLoader loader({.path = path, .settings = settings});
    double last = 0.0;
    while (!loader.IsDone()) {
        const double now = loader.Fraction();
        ASSERT_GE(now, last);
        ASSERT_LE(now, 1.0);
        last = now;
    }
    EXPECT_EQ(loader.Fraction(), 1.0);
    const auto terrain = loader.Take();
    ASSERT_TRUE(terrain);
    EXPECT_EQ(terrain->document->Path(), path);
    EXPECT_EQ(terrain->document->Data().metres, data.metres);
    const LightMap expected = MakeLightMap(data, 2.0, terrain->conditions.sun, BackgroundLight::kSide);
    ASSERT_EQ(terrain->light.texels.size(), expected.texels.size());
    EXPECT_EQ(terrain->light.texels[99].normalX, expected.texels[99].normalX);
    EXPECT_FALSE(loader.Take());
}

TEST(TerrainLoader, GivesACoarseFormOfALargeTerrainFirst)
{
    const test::ScratchFolder folder;
    const ElevationData data = MakeElevation(1700, 33, 10.0, 20.0, [](int x, int y) { return 0.1 * x + 2.0 * y; });
    WriteElevationFile(data, folder / "long.tif");
    TerrainLoader loader({.path = folder / "long.tif"});
    WaitFor([&] { return loader.IsDone(); });
    const auto coarse = loader.TakeCoarse();
    EXPECT_FALSE(loader.TakeCoarse());
    const auto whole = loader.Take();
    ASSERT_TRUE(coarse && whole);
    EXPECT_EQ(whole->document->Data().metres, data.metres);
    const TerrainDocument& document = *coarse->document;
    EXPECT_LE(document.Data().width, 257);
    EXPECT_EQ(document.Data().height, 33);
    const GroundFrame& ground = document.Session().Ground();
    EXPECT_NEAR(ground.Width(), whole->document->Session().Ground().Width(), 1e-6);
    EXPECT_NEAR(ground.Depth(), whole->document->Session().Ground().Depth(), 1e-6);
    for (const auto& [x, z] : {std::pair{0.0, 0.0}, {16990.0, 640.0}, {8000.0, 300.0}})
        EXPECT_NEAR(document.Ground().HeightAt(x, z), whole->document->Ground().HeightAt(x, z), 1.0) << x;
}

TEST(TerrainLoader, FailuresNameTheFile)
{
    const test::ScratchFolder folder;
    WriteElevationFile(Slope(200, 3), folder / "whole.tif");
    const std::string bytes = test::ReadBytes(folder / "whole.tif");
    const std::array paths = {folder / "missing.tif", folder.Write("text.tif", "no picture at all"),
                              folder.Write("cut.tif", bytes.substr(0, bytes.size() / 3)), folder.Write("empty.asc", ""),
                              folder / ""};
    for (const std::string& path : paths) {
        TerrainLoader loader({.path = path});
        WaitFor([&] { return loader.IsDone(); });
        try {
            loader.Take();
            ADD_FAILURE() << path;
        } catch (const std::runtime_error& error) {
            EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
        }
        EXPECT_FALSE(loader.Take());
    }
}

TEST(TerrainLoader, CanBeCancelledAtAnyTime)
{
    const test::ScratchFolder folder;
    const std::string path = folder / "slope.tif";
    WriteElevationFile(Slope(600, 3), path);
    const auto threads = [] {
        const std::filesystem::directory_iterator tasks("/proc/self/task");
        return std::distance(begin(tasks), end(tasks));
    };
    const auto before = threads();
    std::mt19937 random(8);
    for (int round = 0; round < 50; ++round) {
        // The missing file fails at about the time of the cancelling.
        const std::string file = round % 10 == 9 ? "" : round % 3 == 2 ? folder / "missing.tif" : path;
        TerrainLoader loader({.path = file});
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 60000));
        if (round % 2) {
            loader.Cancel();
            EXPECT_FALSE(loader.Take()) << round;
        }
    }
    EXPECT_EQ(threads(), before);
}

}  // namespace
}  // namespace tessara
