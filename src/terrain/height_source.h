#pragma once

#include <cstdint>

class ElevationElement;
class ElevationPalette;

/// Where the terrain's heights and colours come from: a rectangular, row-major grid that belongs to somebody else and
/// stays valid as long as a tree is built on it.
struct HeightSource {
    const ElevationElement* Grid = nullptr;     ///< first element, not owned
    std::int32_t OriginX = 0;                   ///< tree x of grid column 0
    std::int32_t OriginZ = 0;                   ///< tree z of grid row 0
    std::int32_t Width = 0;                     ///< columns; 0 marks a source without data
    std::int32_t Height = 0;                    ///< rows
    std::int32_t Stride = 0;                    ///< elements from one row to the next
    std::int32_t Scale = 0;                     ///< a grid cell is 1 << Scale tree units wide
    const ElevationPalette* Palette = nullptr;  ///< colours of the vertices, not owned, may be null

    /// Whether there is an element to read at all.
    bool HasData() const { return Grid && Width > 0 && Height > 0; }

    /// Height at a position in tree units, clamped into the grid, interpolated between elements where Scale is above 0.
    /// \return a normalised elevation; 0.0 for a source without data
    float SampleAt(std::int32_t x, std::int32_t z) const;
};
