#include "terrain/height_source.h"

#include "textures/elevation_element.h"

#include <algorithm>
#include <cstddef>

float HeightSource::SampleAt(std::int32_t x, std::int32_t z) const
{
    if (!HasData())
        return 0.0f;
    const std::int32_t dx = x - OriginX;
    const std::int32_t dz = z - OriginZ;
    const std::int32_t ix = std::clamp(dx >> Scale, 0, Width - 1);
    const std::int32_t iz = std::clamp(dz >> Scale, 0, Height - 1);
    const ElevationElement* at = Grid + (ix + static_cast<std::ptrdiff_t>(iz) * Stride);
    if (Scale == 0)
        return at->value;

    const std::int32_t mask = (1 << Scale) - 1;
    const float cell = static_cast<float>(mask + 1);
    const float tx = static_cast<float>(dx & mask) / cell;
    const float tz = static_cast<float>(dz & mask) / cell;
    // Past the last column or row the edge's own element stands in for the missing one.
    const std::ptrdiff_t east = ix + 1 < Width ? 1 : 0;
    const std::ptrdiff_t south = iz + 1 < Height ? Stride : 0;
    const float north = (1.0f - tx) * at[0].value + tx * at[east].value;
    const float below = (1.0f - tx) * at[south].value + tx * at[south + east].value;
    return north * (1.0f - tz) + below * tz;
}
