#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessara {

/// A grid of heights as an elevation file holds it, rows from north to south.
struct ElevationData {
    int width = 0;              ///< columns
    int height = 0;             ///< rows
    std::vector<float> metres;  ///< row-major, column x of row y at x + y * width; never empty, all finite

    /// 1 for each cell that has no data, whose height is made up; in the order of `metres`. Empty where all have some.
    /// Whoever gives such a cell a height of its own clears its entry.
    std::vector<std::uint8_t> holes;
    std::optional<double> noDataMark;  ///< what the file writes into such cells, in its own unit, if it says so
    double spacingX = 1.0;             ///< metres from one column to the next, on the ground
    double spacingY = 1.0;             ///< metres from one row to the next
    float minimum = 0.0f;              ///< lowest height in metres
    float maximum = 0.0f;              ///< highest height in metres
    std::optional<std::pair<float, float>> sourceRange;  ///< lowest and highest height read, of a grid that was reduced
    std::size_t missing = 0;                             ///< cells that had no data when they were read
    int sourceWidth = 0;                                 ///< size of the file's grid, larger where it was read reduced
    int sourceHeight = 0;
    bool geographic = false;         ///< the file's coordinates are degrees
    bool georeferenced = false;      ///< originX .. stepY below come from the file
    double originX = 0.0;            ///< easting or longitude of the centre of the north-west cell
    double originY = 0.0;            ///< northing or latitude of it
    double stepX = 1.0;              ///< from one column to the next in the file's coordinates
    double stepY = -1.0;             ///< from one row to the next, negative towards the south
    double turnX = 0.0;              ///< what an easting gains from one row to the next; 0 where rows run west to east
    double turnY = 0.0;              ///< what a northing gains from one column to the next
    std::string referenceSystem;     ///< name of the coordinate reference system, empty when the file has none
    std::string referenceWkt;        ///< the same in well-known text
    double heightUnit = 1.0;         ///< metres in one of the file's units of heights
    std::string heightUnitName;      ///< such as "ft"; empty where the file's heights are metres
    std::string format;              ///< name of the file format
    std::vector<std::string> notes;  ///< one sentence each for the user: filled cells, reduced size, assumed units

    /// Whether the file's grid is turned against north. Then originX to turnY say where it lies, though it isn't
    /// georeferenced: cells are drawn, measured and kept as if it were not turned.
    bool IsTurned() const { return turnX != 0.0 || turnY != 0.0; }

    bool HasData(std::size_t cell) const { return holes.empty() || holes[cell] == 0; }
    bool HasData(int x, int y) const
    {
        return HasData(static_cast<std::size_t>(x) + static_cast<std::size_t>(y) * static_cast<std::size_t>(width));
    }
};

/// Sets minimum and maximum from the heights, of which there must be one.
void ScanHeights(ElevationData& data);

}  // namespace tessara
