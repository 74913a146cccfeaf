#pragma once

namespace tessara {

class ProjectPlace;
struct ElevationData;
struct SavedMatrix;

/// What a project keeps of a terrain's heights beside the elevations from 0 to 1 that the surface saves: the metres of
/// cells whose elevation doesn't give them back to the bit, and which cells had no data. Both count for a cell only as
/// long as its elevation is the one of those metres, so that whoever changes an elevation needn't know of them.

/// \param data heights of the matrix's cells, or none; minimum and maximum are what 0 and 1 stand for
/// \throws StorageError
void WriteMeasured(ProjectPlace& place, const SavedMatrix& matrix, const ElevationData& data);

/// \param data its metres are those of the elevations and become exact; gets its holes \throws StorageError
void ReadMeasured(const ProjectPlace& place, const SavedMatrix& matrix, ElevationData& data);

}  // namespace tessara
