// What it costs to save a terrain into a project file and to load it, beside the cost of writing and reading the same
// bytes.

#include "host/elevation_matrix.h"
#include "host/memory_place.h"
#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "support/test_grid.h"
#include "surface/co_tessara.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

/// In the folder that the program was started in: a temporary folder may be no disk at all.
const std::string kPath = (std::filesystem::current_path() / "project_bench.tessara").string();

struct Terrain {
    explicit Terrain(LONG side)
    {
        surface->InitServer();
        surface->SetMatrix(matrix.Get());
        if (side == 0)
            return;
        matrix->SetWidth(side);
        matrix->SetHeight(side);
        matrix->AllocateCells();
        for (LONG y = 0; y < side; ++y) {
            for (LONG x = 0; x < side; ++x)
                matrix->ElementAt(x, y)->value = HashNoise(x, y, 1);
        }
    }
    ~Terrain() { surface->StopServer(); }

    ComPtr<tessara::ElevationMatrix> matrix = MakeObject<tessara::ElevationMatrix>();
    ComPtr<CoTessara> surface = MakeObject<CoTessara>();
};

void Save(const Terrain& terrain)
{
    tessara::ProjectWriter writer(kPath);
    const auto place = writer.AddElement("terrain");
    terrain.surface->SerializeSurfaceProperties(place.Get());
    terrain.surface->SerializeMatrix(place.Get());
    terrain.surface->SerializePalette(place.Get());
    terrain.surface->SerializeTextures(place.Get());
    writer.Commit();
}

LONG SideOf(const benchmark::State& state)
{
    return static_cast<LONG>(state.range(0));
}

/// Bytes of the elevations.
void CountBytes(benchmark::State& state)
{
    state.SetBytesProcessed(state.iterations() * state.range(0) * state.range(0) * 4);
}

void SaveTerrain(benchmark::State& state)
{
    const Terrain terrain(SideOf(state));
    for (auto _ : state)
        Save(terrain);
    CountBytes(state);
}
BENCHMARK(SaveTerrain)->Arg(1025)->Arg(4097)->Unit(benchmark::kMillisecond)->UseRealTime();

/// A new file, its bytes on the disk, and its name.
void WriteBytes(benchmark::State& state)
{
    const auto side = static_cast<std::size_t>(SideOf(state));
    const std::vector<char> bytes(side * side * 4, 'x');
    const std::string beside = kPath + ".new";
    for (auto _ : state) {
        const int file = open(beside.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0666);
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t written = write(file, bytes.data() + done, bytes.size() - done);
            if (written < 0)
                std::abort();
            done += static_cast<std::size_t>(written);
        }
        fsync(file);
        close(file);
        std::rename(beside.c_str(), kPath.c_str());
    }
    CountBytes(state);
    std::filesystem::remove(kPath);
}
BENCHMARK(WriteBytes)->Arg(1025)->Arg(4097)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From a file in the system's cache, into a matrix, without the tree.
void LoadTerrain(benchmark::State& state)
{
    Save(Terrain(SideOf(state)));
    for (auto _ : state) {
        const Terrain loaded(0);
        const auto place = tessara::ProjectFile(kPath).Open("terrain");
        loaded.surface->LoadSerializedSurfaceProperties(place.Get());
        if (FAILED(loaded.surface->LoadSerializedMatrix(place.Get())))
            std::abort();
        loaded.surface->LoadSerializedPalette(place.Get());
        loaded.surface->LoadSerializedTextures(place.Get());
    }
    CountBytes(state);
    std::filesystem::remove(kPath);
}
BENCHMARK(LoadTerrain)->Arg(1025)->Arg(4097)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadBytes(benchmark::State& state)
{
    Save(Terrain(SideOf(state)));
    for (auto _ : state) {
        std::vector<char> bytes(std::filesystem::file_size(kPath));
        const int file = open(kPath.c_str(), O_RDONLY);
        benchmark::DoNotOptimize(read(file, bytes.data(), bytes.size()));
        close(file);
    }
    CountBytes(state);
    std::filesystem::remove(kPath);
}
BENCHMARK(ReadBytes)->Arg(1025)->Arg(4097)->Unit(benchmark::kMillisecond)->UseRealTime();

// The component's part of both: cells to bytes and back, with a parser that keeps the block in memory.

void CellsToBytes(benchmark::State& state)
{
    const Terrain terrain(SideOf(state));
    const auto place = MakeObject<tessara::MemoryPlace>();
    for (auto _ : state)
        terrain.surface->SerializeMatrix(place.Get());
    CountBytes(state);
}
BENCHMARK(CellsToBytes)->Arg(4097)->Unit(benchmark::kMillisecond);

void BytesToCells(benchmark::State& state)
{
    const Terrain terrain(SideOf(state));
    const auto place = MakeObject<tessara::MemoryPlace>();
    terrain.surface->SerializeMatrix(place.Get());
    const Terrain loaded(0);
    for (auto _ : state)
        loaded.surface->LoadSerializedMatrix(place.Get());
    CountBytes(state);
}
BENCHMARK(BytesToCells)->Arg(4097)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
