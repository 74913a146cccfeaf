#include "persistence/saved_properties.h"

#include "persistence/saved_place.h"

namespace tessara {

namespace {

constexpr float kScaleForUnreadable = 30.0f;

}  // namespace

SavedProperties SavedProperties::Read(IParser& parser)
{
    SavedPlace place(parser, SavedId::Lod, SavedId::ElevationScale);
    SavedProperties saved;
    place.ReadFloats(SavedId::Lod, {&saved.lod, 1});
    place.ReadFloats(SavedId::Translation, saved.translation);
    if (place.ReadFloats(SavedId::ElevationScale, {&saved.elevationScale, 1}) == Reading::Unreadable)
        saved.elevationScale = kScaleForUnreadable;
    return saved;
}

void SavedProperties::Write(IParser& parser) const
{
    SavedPlace place(parser, SavedId::Lod, SavedId::ElevationScale);
    place.Write(SavedId::Lod, lod);
    place.Write(SavedId::Translation, translation);
    place.Write(SavedId::ElevationScale, elevationScale);
}

}  // namespace tessara
