#pragma once

#include "../../textures/elevation_palette.h"
#include "../elevation/elevation_data.h"
#include "project_view.h"

#include <vector>

namespace tessara {

class ProjectPlace;
class TerrainSession;

/// A terrain as a project holds it, for programs.
struct ProjectTerrain {
    ElevationData data;             ///< in metres, as they were measured. Its range is what 0.0 and 1.0 stand for
    std::vector<float> elevations;  ///< the same normalised, to the bit as they were saved; in the order of data.metres
    double exaggeration = 1.0;
    ElevationPalette palette;
    ProjectView view;
};

/// Reads a terrain. What is missing or makes no sense gets a value that can be worked with: elevations as in
/// ITessara::LoadSerializedMatrix, a spacing that keeps the proportions that the surface had.
/// \throws StorageError for a place without elevations
ProjectTerrain ReadTerrain(ProjectPlace& place);

/// The same without the heights: `metres` and `elevations` are empty.
ProjectTerrain ReadTerrainFrame(ProjectPlace& place);

/// Writes a terrain: everything that its surface saves, without the border of the session, and what a program remembers
/// of it. \param data where the terrain lies, and its heights, which come back to the bit where they are those of the
/// session; without heights those of the session's elevations do \throws StorageError
void WriteTerrain(ProjectPlace& place, const TerrainSession& session, const ElevationData& data, double exaggeration,
                  const ProjectView& view);

/// Changes of a terrain that is in a project. \throws StorageError
void WriteExaggeration(ProjectPlace& place, double exaggeration);
void WriteLevelOfDetail(ProjectPlace& place, double levelOfDetail);
void WritePalette(ProjectPlace& place, const ElevationPalette& palette);

}  // namespace tessara
