#include "host/project/project_terrain.h"

#include "host/project/project_place.h"
#include "host/storage/sqlite_file.h"
#include "host/terrain_session.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <span>
#include <utility>

namespace tessara {

namespace {

constexpr std::int32_t kIntegers = 2;
constexpr std::int32_t kSizes = 8;
constexpr std::int32_t kFloats = 0x10;
constexpr std::int32_t kBytes = 0x80;
constexpr int kEntries = 256;

constexpr const char* kExaggeration = "exaggeration";
constexpr double kLargestExaggeration = 1000.0;
constexpr double kLargestSpacing = 1e6;
constexpr float kLargestElevation = 1e9f;
constexpr float kLargestMetres = 1e7f;

/// Where the settings of a terrain's place on the ground go.
constexpr std::pair<const char*, double ElevationData::*> kGroundNumbers[] = {
    {"spacing.east", &ElevationData::spacingX},  {"spacing.south", &ElevationData::spacingY},
    {"origin.x", &ElevationData::originX},       {"origin.y", &ElevationData::originY},
    {"step.x", &ElevationData::stepX},           {"step.y", &ElevationData::stepY},
    {"height.unit", &ElevationData::heightUnit},
};
constexpr std::pair<const char*, bool ElevationData::*> kGroundSwitches[] = {
    {"georeferenced", &ElevationData::georeferenced},
    {"geographic", &ElevationData::geographic},
};
constexpr std::pair<const char*, std::string ElevationData::*> kGroundTexts[] = {
    {"reference.name", &ElevationData::referenceSystem},
    {"reference.wkt", &ElevationData::referenceWkt},
    {"height.unitName", &ElevationData::heightUnitName},
};

/// Items of a value that has so many, or nothing.
template <class T>
std::optional<std::vector<T>> Items(const ProjectPlace& place, const char* name, std::size_t count)
{
    const auto bytes = place.Read(name);
    if (!bytes || bytes->size() != count * sizeof(T))
        return std::nullopt;
    std::vector<T> items(count);
    std::memcpy(items.data(), bytes->data(), bytes->size());
    return items;
}

template <class T>
T Item(const ProjectPlace& place, const char* name, T otherwise)
{
    const auto items = Items<T>(place, name, 1);
    return items ? items->front() : otherwise;
}

template <class T>
void Write(ProjectPlace& place, const char* name, std::int32_t typeCode, std::span<const T> items)
{
    place.Write(name, typeCode, items.data(), items.size_bytes());
}

template <class T>
void Write(ProjectPlace& place, const char* name, std::int32_t typeCode, const T& item)
{
    place.Write(name, typeCode, &item, sizeof item);
}

float Metres(const ProjectPlace& place, const char* name, float otherwise)
{
    const float metres = Item(place, name, otherwise);
    return std::isfinite(metres) && std::fabs(metres) <= kLargestMetres ? metres : otherwise;
}

bool IsSpacing(double metres)
{
    return metres > 0.0 && metres <= kLargestSpacing;
}

ElevationPalette ReadPalette(const ProjectPlace& place)
{
    ElevationPalette palette;
    const auto red = Items<std::uint8_t>(place, "PALETTE_INFO_RED", kEntries);
    const auto green = Items<std::uint8_t>(place, "PALETTE_INFO_GREEN", kEntries);
    const auto blue = Items<std::uint8_t>(place, "PALETTE_INFO_BLUE", kEntries);
    const auto nodes = Items<std::int32_t>(place, "PALETTE_INFO_ARRAY_NODE", kEntries);
    const float low = Item(place, "PALETTE_INFO_MIN_ELV", -1.0f);
    const float high = Item(place, "PALETTE_INFO_MAX_ELV", -1.0f);
    if (!red || !green || !blue || !nodes || !(low >= 0.0f && low <= high && high < kEntries))
        return palette;
    palette.red = *red;
    palette.green = *green;
    palette.blue = *blue;
    std::transform(nodes->begin(), nodes->end(), palette.nodeFlags.begin(),
                   [](std::int32_t flag) { return static_cast<std::uint8_t>(flag != 0); });
    palette.minElevation = static_cast<std::int32_t>(low);
    palette.maxElevation = static_cast<std::int32_t>(high);
    return palette;
}

/// Of a surface of another program, the spacing at which its heights are drawn in their true proportions.
double SpacingOf(const ProjectPlace& place, const ElevationData& data)
{
    const double scale = static_cast<double>(Item(place, "ELEVATION_SCALE", 0.0f));
    const double spacing = (static_cast<double>(data.maximum) - static_cast<double>(data.minimum)) / scale;
    return IsSpacing(spacing) ? spacing : 1.0;
}

void ReadGround(const ProjectPlace& place, const ProjectSettings& settings, ElevationData& data)
{
    data.spacingX = data.spacingY = 0.0;
    for (const auto& [name, member] : kGroundNumbers)
        data.*member = NumberOf(settings, name, data.*member);
    for (const auto& [name, member] : kGroundSwitches)
        data.*member = NumberOf(settings, name, 0.0) != 0.0;
    for (const auto& [name, member] : kGroundTexts)
        data.*member = TextOf(settings, name);
    if (!IsSpacing(data.heightUnit)) {
        data.heightUnit = 1.0;
        data.heightUnitName.clear();
    }
    if (!IsSpacing(data.spacingX) || !IsSpacing(data.spacingY))
        data.spacingX = data.spacingY = SpacingOf(place, data);
}

void RememberGround(ProjectPlace& place, const ElevationData& data)
{
    for (const auto& [name, member] : kGroundNumbers)
        place.Set(name, data.*member);
    for (const auto& [name, member] : kGroundSwitches)
        place.Set(name, data.*member ? 1.0 : 0.0);
    for (const auto& [name, member] : kGroundTexts)
        place.Set(name, data.*member);
}

/// Writes the session's matrix without its border, as a surface without one would.
void WriteWithoutBorder(ProjectPlace& place, const TerrainSession& session)
{
    const LONG width = session.Columns() - 2 * session.Border();
    const LONG height = session.Rows() - 2 * session.Border();
    std::vector<float> elevations;
    elevations.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (LONG y = 0; y < height; ++y) {
        for (LONG x = 0; x < width; ++x)
            elevations.push_back(session.Matrix().ElementAt(x + session.Border(), y + session.Border())->value);
    }
    Write(place, "MATRIX_WIDTH", kSizes, width);
    Write(place, "MATRIX_HEIGHT", kSizes, height);
    Write(place, "MATRIX_DATA", kFloats, std::span<const float>(elevations));
    constexpr float kNoTranslation[3] = {};
    Write(place, "TRANSLATION", kFloats, std::span<const float>(kNoTranslation));
}

/// \throws StorageError for a failure of one of the surface's own methods
void Check(const ProjectPlace& place, HRESULT result)
{
    if (FAILED(result))
        throw StorageError("The terrain \"" + place.Name() + "\" can't be saved: there is not enough memory");
}

}  // namespace

ProjectTerrain ReadTerrainFrame(const ProjectPlace& place)
{
    ProjectTerrain terrain;
    ElevationData& data = terrain.data;
    data.width = Item<std::int32_t>(place, "MATRIX_WIDTH", 0);
    data.height = Item<std::int32_t>(place, "MATRIX_HEIGHT", 0);
    data.minimum = Metres(place, "MIN_ELEVATION", 0.0f);
    data.maximum = Metres(place, "MAX_ELEVATION", 255.0f);
    if (data.minimum > data.maximum)
        std::swap(data.minimum, data.maximum);
    const ProjectSettings settings = place.Settings();
    ReadGround(place, settings, data);
    data.sourceWidth = data.width;
    data.sourceHeight = data.height;
    data.format = "Tessara project";
    const double exaggeration = NumberOf(settings, kExaggeration, 1.0);
    if (exaggeration > 0.0 && exaggeration <= kLargestExaggeration)
        terrain.exaggeration = exaggeration;
    terrain.palette = ReadPalette(place);
    terrain.view = ViewOf(settings);
    return terrain;
}

ProjectTerrain ReadTerrain(const ProjectPlace& place)
{
    ProjectTerrain terrain = ReadTerrainFrame(place);
    ElevationData& data = terrain.data;
    const bool hasSize = data.width > 0 && data.height > 0 && data.width <= INT32_MAX / data.height;
    const std::size_t count =
        hasSize ? static_cast<std::size_t>(data.width) * static_cast<std::size_t>(data.height) : 0;
    auto elevations = Items<float>(place, "MATRIX_DATA", count);
    if (!hasSize || !elevations)
        throw StorageError("The terrain \"" + place.Name() + "\" has no elevations, or they are damaged");
    terrain.elevations = std::move(*elevations);
    data.metres.reserve(count);
    const auto low = static_cast<double>(data.minimum);
    const double range = static_cast<double>(data.maximum) - low;
    for (float& elevation : terrain.elevations) {
        elevation = std::isfinite(elevation) ? std::clamp(elevation, -kLargestElevation, kLargestElevation) : 0.0f;
        data.metres.push_back(static_cast<float>(low + static_cast<double>(elevation) * range));
    }
    return terrain;
}

void WriteTerrain(ProjectPlace& place, const TerrainSession& session, const ElevationData& data, double exaggeration,
                  const ProjectView& view)
{
    ITessara& surface = session.Surface();
    Check(place, surface.SerializeSurfaceProperties(&place));
    if (session.Border() == 0)
        Check(place, surface.SerializeMatrix(&place));
    else
        WriteWithoutBorder(place, session);
    Check(place, surface.SerializePalette(&place));
    Check(place, surface.SerializeTextures(&place));
    // The surface knows elevations from 0 to 1 only; a project tells their metres.
    Write(place, "MIN_ELEVATION", kFloats, data.minimum);
    Write(place, "MAX_ELEVATION", kFloats, data.maximum);
    place.Set(kExaggeration, exaggeration);
    RememberGround(place, data);
    RememberView(place, view);
}

void WriteExaggeration(ProjectPlace& place, double exaggeration)
{
    const GroundFrame ground(ReadTerrainFrame(place).data, exaggeration);
    Write(place, "ELEVATION_SCALE", kFloats, static_cast<float>(ground.ElevationScale()));
    place.Set(kExaggeration, exaggeration);
}

void WriteLevelOfDetail(ProjectPlace& place, double levelOfDetail)
{
    Write(place, "KVOxml_LOD", kFloats, static_cast<float>(levelOfDetail));
}

void WritePalette(ProjectPlace& place, const ElevationPalette& palette)
{
    std::vector<std::int32_t> nodes(palette.nodeFlags.begin(), palette.nodeFlags.end());
    Write(place, "PALETTE_INFO_RED", kBytes, std::span<const std::uint8_t>(palette.red));
    Write(place, "PALETTE_INFO_GREEN", kBytes, std::span<const std::uint8_t>(palette.green));
    Write(place, "PALETTE_INFO_BLUE", kBytes, std::span<const std::uint8_t>(palette.blue));
    Write(place, "PALETTE_INFO_ARRAY_NODE", kIntegers, std::span<const std::int32_t>(nodes));
    Write(place, "PALETTE_INFO_MIN_ELV", kFloats, static_cast<float>(palette.minElevation));
    Write(place, "PALETTE_INFO_MAX_ELV", kFloats, static_cast<float>(palette.maxElevation));
}

}  // namespace tessara
