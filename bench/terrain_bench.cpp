// The terrain's own cost: build, update, emission and the real-time mode, on fractal heights and an OpenGL that does
// nothing.

#include "support/test_grid.h"
#include "terrain/patch_writer.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <map>
#include <memory>
#include <vector>

extern long long g_drawCalls;

namespace {

constexpr float kHeightScale = 0.1f;  // drawn relief as a part of the terrain's side

TestGrid& Grid(std::int32_t side)
{
    static std::map<std::int32_t, std::unique_ptr<TestGrid>> grids;
    auto& grid = grids[side];
    if (!grid)
        grid = std::make_unique<TestGrid>(side, side, FractalHeights(side));
    return *grid;
}

/// A frustum that lets everything through.
TerrainFrustum OpenFrustum()
{
    TerrainFrustum frustum;
    for (FrustumPlane& plane : frustum.WorldPlanes)
        plane = {0.0f, 1.0f, 0.0f, -1e9f};
    return frustum;
}

struct Scene {
    explicit Scene(std::int32_t size, float lod = 60.0f) : side(static_cast<float>(size)), frustum(OpenFrustum())
    {
        terrain.SetElevationScale(side * kHeightScale);
        terrain.SetLOD(lod);
        terrain.InitQuadTree(Grid(size).Source());
        for (int frame = 0; frame < 20; ++frame)
            Update(0.0f);
    }
    /// Places the viewer on a circle over the terrain. \param turn 0.0 to 1.0
    Viewer At(float turn) const
    {
        const float swing = (turn < 0.5f ? turn : 1.0f - turn) * 0.5f;
        return {side * (0.4f + swing), side * kHeightScale, side * (0.6f - swing)};
    }
    void Update(float turn) { terrain.Update(At(turn)); }

    float side;
    TerrainFrustum frustum;
    TerrainLod terrain;
};

double CountActive(const QuadNode& node)
{
    double count = 1;
    for (std::uint32_t i = 0; i < 4; ++i) {
        if (node.ActiveMask & ChildBit(i))
            count += CountActive(*node.Children[i]);
    }
    return count;
}

/// Time of one operation as nanoseconds for each of `count` pieces.
void ReportPer(benchmark::State& state, const char* name, double count)
{
    state.counters[name] =
        benchmark::Counter(count / 1e9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void ReportTree(benchmark::State& state, const TerrainLod& terrain)
{
    const auto side = static_cast<double>(state.range(0));
    const auto nodes = static_cast<double>(terrain.Nodes.BlocksUsed());
    ReportPer(state, "ns/node", nodes);
    state.counters["nodes"] = nodes;
    state.counters["bytes/sample"] =
        static_cast<double>(terrain.Nodes.BytesHeld()) / (side * side) + sizeof(ElevationElement);
}

void FirstBuild(benchmark::State& state)
{
    const auto side = static_cast<std::int32_t>(state.range(0));
    const HeightSource source = Grid(side).Source();
    std::unique_ptr<TerrainLod> terrain;
    for (auto _ : state) {
        state.PauseTiming();
        terrain = std::make_unique<TerrainLod>();
        state.ResumeTiming();
        terrain->InitQuadTree(source);
    }
    ReportTree(state, *terrain);
}
BENCHMARK(FirstBuild)->Arg(257)->Arg(1025)->Arg(4097)->Unit(benchmark::kMillisecond);

void Rebuild(benchmark::State& state)
{
    TerrainLod terrain;
    terrain.InitQuadTree(Grid(static_cast<std::int32_t>(state.range(0))).Source());
    for (auto _ : state)
        terrain.Build3D();
    ReportTree(state, terrain);
}
BENCHMARK(Rebuild)->Arg(1025)->Unit(benchmark::kMillisecond);

/// Floor of a first build: as many bytes as the tree has, copied into memory that is as new.
void CopyTree(benchmark::State& state)
{
    TerrainLod terrain;
    terrain.InitQuadTree(Grid(static_cast<std::int32_t>(state.range(0))).Source());
    const std::size_t size = terrain.Nodes.BytesHeld();
    const std::vector<char> tree(size, 'x');
    for (auto _ : state) {
        const std::unique_ptr<char[]> copy(new char[size]);
        std::memcpy(copy.get(), tree.data(), size);
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(CopyTree)->Arg(1025)->Arg(4097)->Unit(benchmark::kMillisecond);

/// The frame after a build, which sheds most of the full tree.
void FirstUpdate(benchmark::State& state)
{
    const auto side = static_cast<std::int32_t>(state.range(0));
    TerrainLod terrain;
    terrain.SetElevationScale(static_cast<float>(side) * kHeightScale);
    terrain.SetLOD(60.0f);
    terrain.InitQuadTree(Grid(side).Source());
    const float middle = static_cast<float>(side) * 0.5f;
    for (auto _ : state) {
        state.PauseTiming();
        terrain.Build3D();
        state.ResumeTiming();
        terrain.Update({middle, 1.0f, middle});
    }
}
BENCHMARK(FirstUpdate)->Arg(1025)->Unit(benchmark::kMillisecond);

void FreeTree(benchmark::State& state)
{
    const auto side = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto terrain = std::make_unique<TerrainLod>();
        terrain->InitQuadTree(Grid(side).Source());
        state.ResumeTiming();
        terrain.reset();
    }
}
BENCHMARK(FreeTree)->Arg(1025)->Unit(benchmark::kMillisecond);

void UpdateSettled(benchmark::State& state)
{
    Scene scene(static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state)
        scene.Update(0.0f);
    const double active = CountActive(*scene.terrain.Root);
    ReportPer(state, "ns/active", active);
    state.counters["active"] = active;
}
BENCHMARK(UpdateSettled)->Arg(257)->Arg(1025)->Arg(4097)->Unit(benchmark::kMicrosecond);

void UpdateMoving(benchmark::State& state)
{
    Scene scene(static_cast<std::int32_t>(state.range(0)));
    float turn = 0.0f;
    for (auto _ : state) {
        turn += 0.002f;
        if (turn > 1.0f)
            turn -= 1.0f;
        scene.Update(turn);
    }
    ReportPer(state, "ns/active", CountActive(*scene.terrain.Root));
}
BENCHMARK(UpdateMoving)->Arg(257)->Arg(1025)->Arg(4097)->Unit(benchmark::kMicrosecond);

/// A straight flight over the terrain, to and fro, at 176 m a frame over samples that lie 30 m apart.
void UpdateFlight(benchmark::State& state)
{
    const auto side = static_cast<std::int32_t>(state.range(0));
    Scene scene(side, 200.0f);
    constexpr float kWay = 176.0f / 30.0f;
    float x = scene.side * 0.2f;
    float way = kWay;
    for (auto _ : state) {
        x += way;
        if (x > scene.side * 0.8f || x < scene.side * 0.2f)
            way = -way;
        scene.terrain.Update({x, 30.0f, scene.side * 0.45f + 0.1f * x});
    }
    const double active = CountActive(*scene.terrain.Root);
    ReportPer(state, "ns/active", active);
    state.counters["active"] = active;
}
BENCHMARK(UpdateFlight)->Arg(1025)->Arg(4097)->Unit(benchmark::kMicrosecond);

void Emission(benchmark::State& state)
{
    Scene scene(1025);
    scene.terrain.UseColor(state.range(0) != 0);
    PatchWriter patch(scene.terrain);
    g_drawCalls = 0;
    for (auto _ : state)
        scene.terrain.Root->Emit(*scene.terrain.RootCorner, 1, &scene.frustum, patch);
    const double drawn = static_cast<double>(g_drawCalls) / static_cast<double>(state.iterations());
    ReportPer(state, "ns/drawn", drawn);
    state.counters["drawn"] = drawn;
}
BENCHMARK(Emission)->ArgName("color")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void RealTimeWholeGrid(benchmark::State& state)
{
    const auto side = static_cast<std::int32_t>(state.range(0));
    TestGrid grid(side, side, FractalHeights(side));
    TerrainLod terrain;
    terrain.SetElevationScale(static_cast<float>(side) * kHeightScale);
    terrain.SetLOD(60.0f);
    terrain.InitQuadTree(grid.Source());
    terrain.SetRenderMode(1);
    const float middle = static_cast<float>(side) * 0.5f;
    for (int frame = 0; frame < 20; ++frame)
        terrain.Update({middle, 1.0f, middle});
    float lift = 0.001f;
    for (auto _ : state) {
        state.PauseTiming();
        for (std::int32_t y = 0; y < side; ++y) {
            for (std::int32_t x = 0; x < side; ++x)
                grid.At(x, y).value += lift;
        }
        lift = -lift;
        state.ResumeTiming();
        terrain.Update({middle, 1.0f, middle});
    }
    ReportPer(state, "ns/active", CountActive(*terrain.Root));
}
BENCHMARK(RealTimeWholeGrid)->Arg(257)->Arg(1025)->Unit(benchmark::kMillisecond);

/// A viewer that stands still in the real-time mode, with one sample changed before each frame, or none.
void RealTimeEdit(benchmark::State& state)
{
    const std::int32_t side = 1025;
    TestGrid grid(side, side, FractalHeights(side));
    TerrainLod terrain;
    terrain.SetElevationScale(static_cast<float>(side) * kHeightScale);
    terrain.SetLOD(60.0f);
    terrain.InitQuadTree(grid.Source());
    terrain.SetRenderMode(1);
    const Viewer viewer{500.0f, 1.0f, 520.0f};
    for (int frame = 0; frame < 20; ++frame)
        terrain.Update(viewer);
    const auto edit = static_cast<float>(state.range(0)) * 0.01f;
    int frame = 0;
    for (auto _ : state) {
        ++frame;
        grid.At(504 + frame % 16, 512).value += frame / 16 % 2 ? edit : -edit;
        terrain.Update(viewer);
    }
    ReportPer(state, "ns/active", CountActive(*terrain.Root));
}
BENCHMARK(RealTimeEdit)->ArgName("edits")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
