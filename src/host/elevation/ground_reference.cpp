#include "host/elevation/ground_reference.h"

#include "host/elevation/ellipsoid.h"

#include <gdal_priv.h>
#include <ogr_spatialref.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>

namespace tessara {
namespace {

constexpr double kAssumedSpacing = 30.0;
constexpr double kLeastSpacing = 1.0e-6;
constexpr double kMostSpacing = 1.0e7;

/// Metres from one cell of the file to the next.
struct Spacing {
    double x = 0.0;
    double y = 0.0;

    bool IsUsable() const { return x >= kLeastSpacing && x <= kMostSpacing && y >= kLeastSpacing && y <= kMostSpacing; }
};

/// Where a grid lies that is turned against north, the first row first that comes first in `data`.
/// \param reducedX,reducedY cells of the file in one that is read
void PlaceTurned(const GridFrame& frame, double reducedX, double reducedY, ElevationData& data)
{
    auto [left, columnX, rowX, top, columnY, rowY] = frame.transform;
    if (frame.flipRows) {
        left += rowX * frame.rows;
        top += rowY * frame.rows;
        rowX = -rowX;
        rowY = -rowY;
    }
    data.stepX = columnX * reducedX;
    data.turnY = columnY * reducedX;
    data.turnX = rowX * reducedY;
    data.stepY = rowY * reducedY;
    data.originX = left + 0.5 * (data.stepX + data.turnX);
    data.originY = top + 0.5 * (data.turnY + data.stepY);
}

/// Whether coordinates without a reference system are longitudes and latitudes: nothing else is that fine and stays
/// within those bounds, or fills them.
bool LooksLikeDegrees(const GridFrame& frame)
{
    constexpr double kSlack = 0.5;  // cells may stand over by half
    const bool within = frame.west >= -180.0 - kSlack && frame.west + frame.Width() <= 360.0 + kSlack &&
                        frame.north <= 90.0 + kSlack && frame.north - frame.Height() >= -90.0 - kSlack;
    const bool fine = std::max(frame.stepX, frame.stepY) <= 0.1;
    return !frame.isTurned && within && (fine || frame.Width() >= 359.0);
}

/// Rounded to a micrometre: the last digits of sines and cosines differ from machine to machine.
Spacing Rounded(double x, double y)
{
    return {std::round(x * 1.0e6) / 1.0e6, std::round(y * 1.0e6) / 1.0e6};
}

Ellipsoid EllipsoidOf(const OGRSpatialReference& reference)
{
    Ellipsoid ellipsoid;
    OGRErr error = OGRERR_NONE;
    const double semiMajor = reference.GetSemiMajor(&error);
    if (error != OGRERR_NONE || !(semiMajor > 0.0))
        return ellipsoid;
    ellipsoid.semiMajor = semiMajor;
    const double inverseFlattening = reference.GetInvFlattening(&error);
    if (error == OGRERR_NONE && (inverseFlattening == 0.0 || inverseFlattening > 1.0))
        ellipsoid.inverseFlattening = inverseFlattening;
    return ellipsoid;
}

/// \param degrees in a unit of the frame
Spacing DegreeSpacing(const GridFrame& frame, double degrees, const Ellipsoid& ellipsoid, ElevationData& data)
{
    const double latitude = frame.isTurned ? 0.0 : frame.MiddleY() * degrees;
    if (std::abs(latitude) > 90.0)
        return {};
    constexpr double kWide = 10.0;
    if (frame.Height() * degrees > kWide)
        data.notes.push_back("The file spans " +
                             std::to_string(std::lround(std::min(frame.Height() * degrees, 180.0))) +
                             " degrees of latitude; its cells are taken as wide as they are in the middle.");
    return Rounded(frame.stepX * degrees * ellipsoid.LongitudeDegree(latitude),
                   frame.stepY * degrees * ellipsoid.LatitudeDegree(latitude));
}

/// The file's spacing corrected for a projection that stretches the ground, as Mercator's does; the same again where
/// it doesn't, or where that can't be found out.
/// \param spacing by the projection's coordinates
Spacing UnstretchedSpacing(const GridFrame& frame, const OGRSpatialReference& reference, Spacing spacing,
                           ElevationData& data)
{
    const std::unique_ptr<OGRSpatialReference> geographic(reference.CloneGeogCS());
    if (geographic == nullptr || frame.isTurned)
        return spacing;
    OGRSpatialReference projected = reference;
    projected.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    geographic->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    const std::unique_ptr<OGRCoordinateTransformation> toDegrees(
        OGRCreateCoordinateTransformation(&projected, geographic.get()));
    std::array<double, 3> x{frame.MiddleX(), frame.MiddleX() + frame.stepX, frame.MiddleX()};
    std::array<double, 3> y{frame.MiddleY(), frame.MiddleY(), frame.MiddleY() + frame.stepY};
    if (toDegrees == nullptr || toDegrees->Transform(3, x.data(), y.data()) == FALSE)
        return spacing;
    const Ellipsoid ellipsoid = EllipsoidOf(*geographic);
    const double degrees = geographic->GetAngularUnits() * 180.0 / std::numbers::pi;
    const double east = degrees * ellipsoid.LongitudeDegree(y[0] * degrees);
    const double north = degrees * ellipsoid.LatitudeDegree(y[0] * degrees);
    const Spacing ground = Rounded(std::hypot((x[1] - x[0]) * east, (y[1] - y[0]) * north),
                                   std::hypot((x[2] - x[0]) * east, (y[2] - y[0]) * north));
    constexpr double kWorthIt = 0.01;
    if (!ground.IsUsable() ||
        (std::abs(ground.x / spacing.x - 1.0) < kWorthIt && std::abs(ground.y / spacing.y - 1.0) < kWorthIt))
        return spacing;
    data.notes.push_back("The file's projection stretches the ground; the cells have the size that they cover in the "
                         "middle of the grid.");
    return ground;
}

/// The name of a reference system, made up from its parts where it has none.
std::string NameOf(const OGRSpatialReference& reference)
{
    const char* name = reference.GetName();
    if (name != nullptr && *name != '\0' && std::string(name) != "unnamed" && std::string(name) != "unknown")
        return name;
    std::string made = "unnamed";
    for (const char* node : {"GEOGCS", "PROJECTION"})
        if (const char* value = reference.GetAttrValue(node))
            made += std::string(" / ") + value;
    return made;
}

void KeepReference(const OGRSpatialReference& reference, ElevationData& data)
{
    data.referenceSystem = NameOf(reference);
    char* text = nullptr;
    if (reference.exportToWkt(&text) == OGRERR_NONE && text != nullptr)
        data.referenceWkt = text;
    CPLFree(text);
}

Spacing ReferencedSpacing(const GridFrame& frame, const OGRSpatialReference& reference, ElevationData& data)
{
    KeepReference(reference, data);
    if (reference.IsGeographic() != FALSE) {
        data.geographic = true;
        const double degrees = reference.GetAngularUnits() * 180.0 / std::numbers::pi;
        return DegreeSpacing(frame, degrees, EllipsoidOf(reference), data);
    }
    const double metres =
        reference.IsProjected() != FALSE ? reference.GetTargetLinearUnits("PROJCS") : reference.GetLinearUnits();
    const Spacing spacing{frame.stepX * metres, frame.stepY * metres};
    return reference.IsProjected() != FALSE && spacing.IsUsable() ? UnstretchedSpacing(frame, reference, spacing, data)
                                                                  : spacing;
}

Spacing UnreferencedSpacing(const GridFrame& whole, const GridFrame& frame, ElevationData& data)
{
    if (LooksLikeDegrees(whole)) {
        data.geographic = true;
        data.notes.push_back("The file names no reference system; its coordinates were taken as degrees of longitude "
                             "and latitude.");
        return DegreeSpacing(frame, 1.0, Ellipsoid{}, data);
    }
    data.notes.push_back("The file names no reference system; its coordinates were taken as metres.");
    return {frame.stepX, frame.stepY};
}

/// The spacing by the file, with notes on what is assumed.
Spacing FileSpacing(GDALDataset& dataset, const GridFrame& frame, ElevationData& data)
{
    const OGRSpatialReference* reference = dataset.GetSpatialRef();
    const std::string assumed = "they were taken to be 30 m apart.";
    if (!frame.isKnown) {
        data.notes.push_back("The file doesn't say how far apart its cells are; " + assumed);
        return {kAssumedSpacing, kAssumedSpacing};
    }
    const Spacing spacing = reference != nullptr ? ReferencedSpacing(frame, *reference, data)
                                                 : UnreferencedSpacing(FrameOf(dataset), frame, data);
    if (spacing.IsUsable())
        return spacing;
    data.notes.push_back("What the file says of the distance of its cells makes no sense; " + assumed);
    return {kAssumedSpacing, kAssumedSpacing};
}

}  // namespace

void LearnGround(GDALDataset& dataset, const GridFrame& frame, double spacing, ElevationData& data)
{
    const char* format =
        dataset.GetDriver() != nullptr ? dataset.GetDriver()->GetMetadataItem(GDAL_DMD_LONGNAME) : nullptr;
    data.format = format != nullptr ? format : dataset.GetDriverName();
    const std::size_t notes = data.notes.size();
    Spacing ground = FileSpacing(dataset, frame, data);
    if (const Spacing given{spacing, spacing}; given.IsUsable()) {
        ground = given;
        data.notes.resize(notes);  // nothing was assumed
    }
    data.spacingX = ground.x;
    data.spacingY = ground.y;
    if (frame.isTurned)
        data.notes.push_back("The file's grid is turned against north; it is shown as if it were not.");
}

void PlaceGrid(const GridFrame& frame, ElevationData& data)
{
    const double reducedX = frame.columns / data.width;
    const double reducedY = frame.rows / data.height;
    data.spacingX *= reducedX;
    data.spacingY *= reducedY;
    data.georeferenced = frame.isKnown && !frame.isTurned;
    if (data.georeferenced) {
        data.stepX = frame.stepX * reducedX;
        data.stepY = -frame.stepY * reducedY;
        data.originX = frame.west + 0.5 * data.stepX;
        data.originY = frame.north + 0.5 * data.stepY;
    } else if (frame.isKnown) {
        PlaceTurned(frame, reducedX, reducedY, data);
    }
}

}  // namespace tessara
