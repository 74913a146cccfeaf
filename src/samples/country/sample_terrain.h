#pragma once

#include "host/elevation/elevation_data.h"
#include "host/elevation/progress_callback.h"

#include <cstdint>

namespace tessara {

constexpr int kSampleTerrainSize = 513;
constexpr std::uint32_t kSampleTerrainSeed = 13;
constexpr int kSmallestSampleSize = 2;
constexpr int kLargestSampleSize = 8193;

/// A made-up country of 15.36 km by 15.36 km: mountains, valleys worn by rivers, and a coast with the sea flat at 0 m.
/// The same numbers give the same heights on every machine, bit for bit.
/// \param size cells along an edge, kSmallestSampleSize to kLargestSampleSize; 513 makes a cell 30 m wide. The country
/// is the same at every size, but fine detail ends at about 2049.
/// \throws ElevationError for any other size
ElevationData MakeSampleTerrain(int size = kSampleTerrainSize, std::uint32_t seed = kSampleTerrainSeed,
                                const ProgressCallback& progress = {});

}  // namespace tessara
