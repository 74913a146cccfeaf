// What the viewer does in answer to a hand: frames while the brush is held, the end of a stroke, a moved camera. On
// terrains of 1025 x 1025 and 4097 x 4097 points, in a small picture, so that a renderer in software isn't bound by its
// pixels.

#include "app/viewer/open_viewer.h"
#include "host/process_memory.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <iostream>
#include <map>
#include <string>

namespace {

using tessara::BrushKind;
using tessara::ViewSettings;
using tessara::test::OpenViewer;

constexpr int kSide = 1025;

/// Brushes in metres and points along an edge of the terrain, 30 metres apart.
void Radii(benchmark::internal::Benchmark* benchmark)
{
    for (const int radius : {100, 400, 3000})
        benchmark->Args({radius, kSide});
    benchmark->Args({400, 4097});
    benchmark->Unit(benchmark::kMillisecond);
}

std::unique_ptr<OpenViewer> Open(benchmark::State& state)
{
    ViewSettings settings;
    settings.realTime = true;
    settings.brush.radius = static_cast<double>(state.range(0));
    auto open = std::make_unique<OpenViewer>(
        tessara::test::Hills(static_cast<int>(state.range(1)), static_cast<int>(state.range(1))), settings);
    open->Settle();
    return open;
}

/// \return places along a circle in the picture
tessara::PicturePoint Hand(int frame)
{
    return {OpenViewer::kWidth * (0.5 + 0.15 * std::cos(0.05 * frame)),
            OpenViewer::kHeight * (0.5 + 0.15 * std::sin(0.05 * frame))};
}

void StrokeFrame(benchmark::State& state)
{
    const auto open = Open(state);
    open->viewer.Pointer().BeginStroke(Hand(0));
    int frame = 0;
    for (auto _ : state) {
        open->viewer.Pointer().Drag(Hand(++frame));
        open->viewer.Pointer().ContinueStroke(0.016);
        open->Draw();
    }
    state.counters["triangles"] = open->viewer.Picture().Figures().triangles;
}
BENCHMARK(StrokeFrame)->Apply(Radii);

void Stroke(benchmark::State& state)
{
    const auto open = Open(state);
    open->viewer.Pointer().BeginStroke(Hand(0));
    int frame = 0;
    for (auto _ : state) {
        open->viewer.Pointer().Drag(Hand(++frame));
        open->viewer.Pointer().ContinueStroke(0.016);
    }
}
BENCHMARK(Stroke)->Apply(Radii);

void EndOfStroke(benchmark::State& state)
{
    const auto open = Open(state);
    for (auto _ : state) {
        open->viewer.Pointer().BeginStroke(Hand(0));
        open->viewer.Pointer().EndDrag();
    }
}
BENCHMARK(EndOfStroke)->Args({400, kSide})->Args({400, 4097})->Unit(benchmark::kMillisecond);

void MapAfterStroke(benchmark::State& state)
{
    const auto open = Open(state);
    for (auto _ : state) {
        open->viewer.Map().Renew();
        open->viewer.Map().Draw(200, 200, 1.0, open->text);
    }
}
BENCHMARK(MapAfterStroke)->Args({400, kSide})->Unit(benchmark::kMillisecond);

void OrbitFrame(benchmark::State& state)
{
    const auto open = Open(state);
    open->Set([](ViewSettings& settings) { settings.realTime = false; });
    open->viewer.Pointer().BeginOrbit(Hand(0));
    int frame = 0;
    for (auto _ : state) {
        open->viewer.Pointer().Drag(Hand(++frame));
        open->Draw();
    }
}
BENCHMARK(OrbitFrame)->Args({400, kSide})->Unit(benchmark::kMillisecond);

void Orbit(benchmark::State& state)
{
    const auto open = Open(state);
    open->viewer.Pointer().BeginOrbit(Hand(0));
    int frame = 0;
    for (auto _ : state)
        open->viewer.Pointer().Drag(Hand(++frame));
}
BENCHMARK(Orbit)->Args({400, kSide})->Unit(benchmark::kMillisecond);

/// A frame of an orbit as large as the viewer's first window shows it. \param state the percentage of the pixels along
/// an edge, and whether edges are smoothed
void WindowFrame(benchmark::State& state)
{
    const int width = 860 * static_cast<int>(state.range(0)) / 100;
    const int height = 730 * static_cast<int>(state.range(0)) / 100;
    OpenViewer open(tessara::test::Hills(kSide, kSide));
    const tessara::RenderTarget target(open.gl, width, height, state.range(1) != 0);
    const auto draw = [&] {
        target.Bind();
        open.viewer.Picture().DrawGround(860, 730);
        glFinish();
    };
    for (int settling = 0; settling < 10; ++settling)
        draw();
    open.viewer.Pointer().BeginOrbit(Hand(0));
    int frame = 0;
    for (auto _ : state) {
        open.viewer.Pointer().Drag(Hand(++frame));
        draw();
    }
}
BENCHMARK(WindowFrame)
    ->ArgNames({"percent", "smooth"})
    ->Args({100, 0})
    ->Args({64, 0})
    ->Args({40, 0})
    ->Args({100, 1})
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

double ThreadMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// What the window's thread does for a terrain that has been read: the longest of its steps is how long the window is
/// dead. In milliseconds of the thread's own time.
void Opening(benchmark::State& state)
{
    const int side = static_cast<int>(state.range(0));
    OpenViewer open(tessara::test::Hills(33, 33));
    open.Settle();
    std::map<std::string, double> longest;
    for (auto _ : state) {
        state.PauseTiming();
        auto terrain = tessara::PrepareTerrain({}, tessara::test::Hills(side, side), open.viewer.Settings(),
                                               {OpenViewer::kWidth, OpenViewer::kHeight});
        state.ResumeTiming();
        const auto step = [&](const char* name, const auto& work) {
            const double start = ThreadMilliseconds();
            work();
            longest[name] = std::max(longest[name], ThreadMilliseconds() - start);
        };
        step("open", [&] { open.viewer.Open(std::move(terrain)); });
        step("first", [&] { open.Draw(); });
        for (int i = 0; i < 10; ++i)
            step("frame", [&] { open.Draw(); });
        step("map", [&] { open.viewer.Map().Draw(200, 200, 1.0, open.text); });
    }
    for (const auto& [name, time] : longest)
        state.counters[name] = time;
    // What is left of a terrain that was closed.
    const auto megabytes = [] { return static_cast<double>(tessara::ResidentBytes()) / (1 << 20); };
    state.counters["MB open"] = megabytes();
    open.Open(tessara::test::Hills(33, 33));
    open.Settle();
    state.counters["MB closed"] = megabytes();
}
BENCHMARK(Opening)->Arg(1025)->Arg(4097)->Unit(benchmark::kMillisecond)->Iterations(1);

void Light(benchmark::State& state)
{
    const auto data = tessara::test::Hills(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(tessara::MakeLightMap(data, 1.0, {-0.6, 0.5, 0.6}, 2048));
}
BENCHMARK(Light)->Arg(1025)->Arg(2048)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    tessara::ReturnLargeBlocks();
    benchmark::Initialize(&argc, argv);
    std::cerr << tessara::OffscreenContext().Describe() << "\n";
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
