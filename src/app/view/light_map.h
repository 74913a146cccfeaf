#pragma once

#include "host/elevation/progress_callback.h"
#include "host/vector3.h"

#include <cstdint>
#include <vector>

namespace tessara {

struct ElevationData;

/// Light on every point of a terrain, worked out once from all of its heights, so that shading doesn't depend on the
/// level of detail. The texels are spread evenly over the grid: the first and last ones of a row are its outermost
/// points.
struct LightMap {
    struct Texel {
        std::uint16_t normalX;   ///< component east of the unit normal, -1 to 1 over 0 to 65535
        std::uint16_t normalZ;   ///< component south
        std::uint16_t sunlight;  ///< share of the sun that no other ground hides, over 0 to 65535
        std::uint16_t skylight;  ///< share of the sky that no other ground hides
    };

    /// Texels along an edge that a picture needs at most.
    static constexpr int kMostSide = 2048;

    int width = 0;
    int height = 0;
    std::vector<Texel> texels;  ///< rows from north to south
};

/// \param exaggeration factor on heights \param sun unit vector of true space towards the sun
/// \param maximumSide texels along an edge; a larger grid is averaged down to it
LightMap MakeLightMap(const ElevationData& data, double exaggeration, const Vector3& sun, int maximumSide,
                      const ProgressCallback& progress = {});

/// A rectangle of a grid; the right column and the bottom row lie outside.
struct GridArea {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool IsEmpty() const noexcept { return left >= right || top >= bottom; }
};

/// Works the normals out again where heights changed. Leaves the rest of the light to the next MakeLightMap.
/// \param map of the same terrain \param cells whose heights changed \return the texels that may have changed
GridArea RenewNormals(LightMap& map, const ElevationData& data, double exaggeration, const GridArea& cells);

}  // namespace tessara
