// Reading an elevation file of 4097 x 4097 points, beside GDAL's own time to read the same values.

#include "host/elevation/elevation_data.h"
#include "host/elevation/elevation_file.h"
#include "support/test_grid.h"

#include <benchmark/benchmark.h>
#include <gdal_priv.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int kSide = 4097;

const std::string kPath = (std::filesystem::temp_directory_path() / "tessara_file_bench.tif").string();

void WriteFile()
{
    GDALAllRegister();
    std::vector<float> heights(static_cast<std::size_t>(kSide) * kSide);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x)
            heights[static_cast<std::size_t>(y) * kSide + static_cast<std::size_t>(x)] = 2000 * HashNoise(x, y, 1);
    }
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("GTiff");
    const GDALDatasetUniquePtr file(driver->Create(kPath.c_str(), kSide, kSide, 1, GDT_Float32, nullptr));
    double place[6] = {0, 30, 0, 0, 0, -30};
    file->SetGeoTransform(place);
    if (file->GetRasterBand(1)->RasterIO(GF_Write, 0, 0, kSide, kSide, heights.data(), kSide, kSide, GDT_Float32, 0,
                                         0) != CE_None)
        std::abort();
}

void ReadFile(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(tessara::ReadElevationFile(kPath));
}
BENCHMARK(ReadFile)->Unit(benchmark::kMillisecond);

void GdalRead(benchmark::State& state)
{
    for (auto _ : state) {
        std::vector<float> heights(static_cast<std::size_t>(kSide) * kSide);
        const GDALDatasetUniquePtr file(GDALDataset::Open(kPath.c_str(), GDAL_OF_RASTER));
        if (!file || file->GetRasterBand(1)->RasterIO(GF_Read, 0, 0, kSide, kSide, heights.data(), kSide, kSide,
                                                      GDT_Float32, 0, 0) != CE_None)
            std::abort();
        benchmark::DoNotOptimize(heights.data());
    }
}
BENCHMARK(GdalRead)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
try {
    benchmark::Initialize(&argc, argv);
    WriteFile();
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove(kPath);
    return 0;
} catch (const std::exception& error) {
    std::cerr << "file_bench: " << error.what() << '\n';
    return 1;
}
