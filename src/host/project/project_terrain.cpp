#include "host/project/project_terrain.h"

#include "host/project/measured_heights.h"
#include "host/project/project_place.h"
#include "host/storage/sqlite_file.h"
#include "host/terrain_session.h"
#include "persistence/saved_matrix.h"
#include "persistence/saved_palette.h"
#include "persistence/saved_place.h"
#include "persistence/saved_properties.h"

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace tessara {

namespace {

constexpr const char* kExaggeration = "exaggeration";
constexpr const char* kNoData = "height.noData";
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargestExaggeration = 1000.0;
constexpr double kLargestSpacing = 1e6;
constexpr float kLargestMetres = 1e7f;

/// Where the settings of a terrain's place on the ground go.
constexpr std::pair<const char*, double ElevationData::*> kGroundNumbers[] = {
    {"spacing.east", &ElevationData::spacingX},  {"spacing.south", &ElevationData::spacingY},
    {"origin.x", &ElevationData::originX},       {"origin.y", &ElevationData::originY},
    {"step.x", &ElevationData::stepX},           {"step.y", &ElevationData::stepY},
    {"turn.x", &ElevationData::turnX},           {"turn.y", &ElevationData::turnY},
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

float Metres(const std::optional<float>& saved, float otherwise)
{
    return saved && std::fabs(*saved) <= kLargestMetres ? *saved : otherwise;
}

bool IsSpacing(double metres)
{
    return metres > 0.0 && metres <= kLargestSpacing;
}

/// The default palette where there is none, or one of a range that is no range of the table.
ElevationPalette ReadPalette(ProjectPlace& place)
{
    ElevationPalette palette;
    SavedPalette saved;
    if (saved.Read(place) && saved.low >= 0.0f && saved.low <= saved.high && saved.high < SavedPalette::kEntries)
        saved.GiveTo(palette);
    return palette;
}

/// Of a surface of another program, the spacing at which its heights are drawn in their true proportions.
double SpacingOf(ProjectPlace& place, const ElevationData& data)
{
    const auto scale = static_cast<double>(SavedProperties::Read(place).elevationScale);
    const double spacing = (static_cast<double>(data.maximum) - static_cast<double>(data.minimum)) / scale;
    return IsSpacing(spacing) ? spacing : 1.0;
}

void ReadGround(ProjectPlace& place, const ProjectSettings& settings, ElevationData& data)
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
    if (data.noDataMark && std::isfinite(*data.noDataMark))
        place.Set(kNoData, *data.noDataMark);
    else
        place.Forget(kNoData);
}

/// The session's matrix as a surface without a border would save it. The surface knows elevations from 0 to 1 only; a
/// project tells their metres.
SavedMatrix MatrixOf(const TerrainSession& session, const ElevationData& data)
{
    SavedMatrix saved;
    saved.width = session.Columns() - 2 * session.Border();
    saved.height = session.Rows() - 2 * session.Border();
    saved.minimum = data.minimum;
    saved.maximum = data.maximum;
    saved.elevations.reserve(static_cast<std::size_t>(saved.width) * static_cast<std::size_t>(saved.height));
    for (LONG y = 0; y < saved.height; ++y) {
        const ElevationElement* cell = session.Matrix().ElementAt(session.Border(), y + session.Border());
        for (LONG x = 0; x < saved.width; ++x, ++cell)
            saved.elevations.push_back(cell->value);
    }
    return saved;
}

/// The border is the session's own, and so is the translation that it asks for.
SavedProperties PropertiesOf(const TerrainSession& session)
{
    SavedProperties saved;
    saved.lod = static_cast<float>(session.LevelOfDetail());
    saved.elevationScale = static_cast<float>(session.Ground().ElevationScale());
    return saved;
}

/// \throws StorageError for a failure of one of the surface's own methods
void Check(const ProjectPlace& place, HRESULT result)
{
    if (FAILED(result))
        throw StorageError("The terrain \"" + place.Name() + "\" can't be saved: there is not enough memory");
}

/// Everything but the heights.
ProjectTerrain TerrainOf(ProjectPlace& place, const SavedMatrix& matrix)
{
    ProjectTerrain terrain;
    ElevationData& data = terrain.data;
    data.width = matrix.width;
    data.height = matrix.height;
    data.minimum = Metres(matrix.minimum, 0.0f);
    data.maximum = Metres(matrix.maximum, 255.0f);
    if (data.minimum > data.maximum)
        std::swap(data.minimum, data.maximum);
    const ProjectSettings settings = place.Settings();
    ReadGround(place, settings, data);
    if (const double mark = NumberOf(settings, kNoData, kNone); std::isfinite(mark))
        data.noDataMark = mark;
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

}  // namespace

ProjectTerrain ReadTerrainFrame(ProjectPlace& place)
{
    SavedMatrix matrix;
    matrix.ReadFrame(place);
    return TerrainOf(place, matrix);
}

ProjectTerrain ReadTerrain(ProjectPlace& place)
{
    SavedMatrix matrix;
    if (!matrix.Read(place))
        throw StorageError("The terrain \"" + place.Name() + "\" has no elevations, or they are damaged");
    ProjectTerrain terrain = TerrainOf(place, matrix);
    ElevationData& data = terrain.data;
    data.metres.reserve(matrix.elevations.size());
    const auto low = static_cast<double>(data.minimum);
    const double range = static_cast<double>(data.maximum) - low;
    for (const float elevation : matrix.elevations)
        data.metres.push_back(static_cast<float>(low + static_cast<double>(elevation) * range));
    ReadMeasured(place, matrix, data);
    terrain.elevations = std::move(matrix.elevations);
    return terrain;
}

void WriteTerrain(ProjectPlace& place, const TerrainSession& session, const ElevationData& data, double exaggeration,
                  const ProjectView& view)
{
    ITessara& surface = session.Surface();
    PropertiesOf(session).Write(place);
    const SavedMatrix matrix = MatrixOf(session, data);
    matrix.Write(place);
    WriteMeasured(place, matrix, data);
    Check(place, surface.SerializePalette(&place));
    Check(place, surface.SerializeTextures(&place));
    place.Set(kExaggeration, exaggeration);
    RememberGround(place, data);
    RememberView(place, view);
}

void WriteExaggeration(ProjectPlace& place, double exaggeration)
{
    const GroundFrame ground(ReadTerrainFrame(place).data, exaggeration);
    SavedPlace(place, SavedId::ElevationScale, SavedId::ElevationScale)
        .Write(SavedId::ElevationScale, static_cast<float>(ground.ElevationScale()));
    place.Set(kExaggeration, exaggeration);
}

void WriteLevelOfDetail(ProjectPlace& place, double levelOfDetail)
{
    SavedPlace(place, SavedId::Lod, SavedId::Lod).Write(SavedId::Lod, static_cast<float>(levelOfDetail));
}

void WritePalette(ProjectPlace& place, const ElevationPalette& palette)
{
    SavedPalette::Of(palette).Write(place);
}

}  // namespace tessara
