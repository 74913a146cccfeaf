#include "persistence/saved_matrix.h"

#include "persistence/saved_place.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr float kLargestElevation = 1e9f;

/// No value reaches other cells' errors or normals as infinity or as no number.
float UsableElevation(float saved)
{
    return std::isfinite(saved) ? std::clamp(saved, -kLargestElevation, kLargestElevation) : 0.0f;
}

std::optional<float> ReadEnd(SavedPlace& place, SavedId value)
{
    float end = 0.0f;
    return place.ReadFloats(value, {&end, 1}) == Reading::Read ? std::optional(end) : std::nullopt;
}

}  // namespace

bool SavedMatrix::ReadFrame(SavedPlace& place)
{
    LONG size[2] = {0, 0};
    if (place.ReadInteger(SavedId::MatrixWidth, &size[0]) != Reading::Read || size[0] == 0 ||
        place.ReadInteger(SavedId::MatrixHeight, &size[1]) != Reading::Read ||
        BlockSize(size[0], size[1], sizeof(float)) == 0)
        return false;
    width = size[0];
    height = size[1];
    maximum = ReadEnd(place, SavedId::MaxElevation);
    minimum = ReadEnd(place, SavedId::MinElevation);
    return true;
}

bool SavedMatrix::ReadFrame(IParser& parser)
{
    SavedPlace place(parser, SavedId::MinElevation, SavedId::MatrixData);
    return ReadFrame(place);
}

bool SavedMatrix::Read(IParser& parser)
{
    SavedPlace place(parser, SavedId::MinElevation, SavedId::MatrixData);
    ParserNode node = nullptr;
    if (!ReadFrame(place) || !place.Find(SavedId::MatrixData, &node))
        return false;
    elevations.resize(BlockSize(width, height, 1));
    if (place.Fetch(SavedId::MatrixData, node, elevations.data()) != Reading::Read) {
        elevations.clear();
        return false;
    }
    std::transform(elevations.begin(), elevations.end(), elevations.begin(), UsableElevation);
    return true;
}

void SavedMatrix::Write(IParser& parser) const
{
    SavedPlace place(parser, SavedId::MinElevation, SavedId::MatrixData);
    place.Write(SavedId::MinElevation, minimum.value_or(0.0f));
    place.Write(SavedId::MaxElevation, maximum.value_or(0.0f));
    place.Write(SavedId::MatrixWidth, width);
    place.Write(SavedId::MatrixHeight, height);
    place.Write(SavedId::MatrixData, elevations.data(), elevations.size() * sizeof(float));
}

}  // namespace tessara
