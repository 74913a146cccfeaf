#include "host/elevation/grid_choice.h"

#include "host/elevation/elevation_file.h"

#include <gdal_priv.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>

namespace tessara {
namespace {

constexpr char kCutNote[] = "What was asked for reaches past the file's edge; what lies within was read.";

std::string Text(const MapExtent& extent)
{
    char text[160];
    std::snprintf(text, sizeof text, "%.9g,%.9g,%.9g,%.9g", extent.west, extent.south, extent.east, extent.north);
    return text;
}

MapExtent ExtentOf(const GridFrame& frame)
{
    return {frame.west, frame.South(), frame.East(), frame.north};
}

bool Meet(const MapExtent& a, const MapExtent& b)
{
    return a.west < b.east && b.west < a.east && a.south < b.north && b.south < a.north;
}

/// The same extent a turn of the globe further, where only there it meets the other.
MapExtent TurnedTo(const MapExtent& extent, const MapExtent& other)
{
    for (const double turn : {-360.0, 360.0}) {
        const MapExtent turned{extent.west + turn, extent.south, extent.east + turn, extent.north};
        if (!Meet(extent, other) && Meet(turned, other))
            return turned;
    }
    return extent;
}

/// What an extent in degrees covers in the coordinates of a reference system; nothing where that can't be found out.
std::optional<MapExtent> FromDegrees(const MapExtent& degrees, const OGRSpatialReference* reference)
{
    if (reference == nullptr || degrees.south < -90.0 || degrees.north > 90.0 || degrees.west < -360.0 ||
        degrees.east > 360.0)
        return std::nullopt;
    OGRSpatialReference target = *reference;
    OGRSpatialReference source;
    source.importFromEPSG(4326);
    source.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    target.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    const std::unique_ptr<OGRCoordinateTransformation> transformation(
        OGRCreateCoordinateTransformation(&source, &target));
    MapExtent found;
    constexpr int kPointsOnEdge = 21;
    if (transformation == nullptr ||
        transformation->TransformBounds(degrees.west, degrees.south, degrees.east, degrees.north, &found.west,
                                        &found.south, &found.east, &found.north, kPointsOnEdge) == FALSE)
        return std::nullopt;
    return found;
}

/// The extent in the file's coordinates.
MapExtent Understand(GDALDataset& dataset, const GridFrame& frame, const MapExtent& asked,
                     std::vector<std::string>& notes)
{
    const OGRSpatialReference* reference = dataset.GetSpatialRef();
    const MapExtent whole = ExtentOf(frame);
    MapExtent extent = asked;
    if (reference == nullptr || reference->IsGeographic() != FALSE) {
        extent = TurnedTo(asked, whole);
    } else if (!Meet(asked, whole)) {
        if (const std::optional<MapExtent> found = FromDegrees(asked, reference); found && Meet(*found, whole)) {
            extent = *found;
            notes.push_back("The extent was taken as degrees; in the file's coordinates it is " + Text(extent) + ".");
        }
    }
    if (!Meet(extent, whole))
        throw std::invalid_argument("the extent " + Text(asked) + " lies outside of it; it covers " + Text(whole));
    return extent;
}

/// The cells along one axis that a stretch covers, of which a sliver doesn't count.
/// \param from,to in cells from the first one's edge
std::pair<int, int> Cells(double from, double to, int count, bool& isCut)
{
    constexpr double kSliver = 1.0e-6;
    const double first = std::floor(from + kSliver);
    const double last = std::ceil(to - kSliver);
    isCut = isCut || first < 0.0 || last > count;
    const int begin = static_cast<int>(std::clamp(first, 0.0, count - 1.0));
    const int end = static_cast<int>(std::clamp(last, begin + 1.0, static_cast<double>(count)));
    return {begin, end - begin};
}

CellWindow CellsOf(GDALDataset& dataset, const GridFrame& frame, const MapExtent& asked,
                   std::vector<std::string>& notes)
{
    if (!frame.isKnown)
        throw std::invalid_argument("it doesn't say where it lies, so its cells can't be chosen by an extent");
    if (frame.isTurned)
        throw std::invalid_argument("its grid is turned against north, so its cells can't be chosen by an extent");
    const MapExtent extent = Understand(dataset, frame, asked, notes);
    bool isCut = false;
    const auto [column, columns] = Cells((extent.west - frame.west) / frame.stepX,
                                         (extent.east - frame.west) / frame.stepX, dataset.GetRasterXSize(), isCut);
    const auto [row, rows] = Cells((frame.north - extent.north) / frame.stepY,
                                   (frame.north - extent.south) / frame.stepY, dataset.GetRasterYSize(), isCut);
    if (isCut)
        notes.emplace_back(kCutNote);
    return {column, row, columns, rows};
}

CellWindow CutTo(GDALDataset& dataset, const CellWindow& asked, std::vector<std::string>& notes)
{
    const int width = dataset.GetRasterXSize();
    const int height = dataset.GetRasterYSize();
    if (asked.column >= width || asked.row >= height)
        throw std::invalid_argument("the window begins outside of its " + std::to_string(width) + " columns and " +
                                    std::to_string(height) + " rows");
    const CellWindow window{asked.column, asked.row, std::min(asked.columns, width - asked.column),
                            std::min(asked.rows, height - asked.row)};
    if (window.columns < asked.columns || window.rows < asked.rows)
        notes.emplace_back(kCutNote);
    return window;
}

}  // namespace

CellWindow ChooseCells(GDALDataset& dataset, const GridFrame& frame, const ElevationReadOptions& options,
                       std::vector<std::string>& notes)
{
    const int width = dataset.GetRasterXSize();
    const int height = dataset.GetRasterYSize();
    CellWindow window{0, 0, width, height};
    if (options.extent)
        window = CellsOf(dataset, frame, *options.extent, notes);
    else if (options.window)
        window = CutTo(dataset, *options.window, notes);
    if (frame.flipColumns)
        window.column = width - window.column - window.columns;
    if (frame.flipRows)
        window.row = height - window.row - window.rows;
    return window;
}

}  // namespace tessara
