#include "app/viewer/terrain/readout.h"

#include "app/viewer/camera/pointer.h"
#include "app/viewer/picture/view_text.h"
#include "app/viewer/terrain/terrain_document.h"

namespace tessara {

std::string Readout::Place() const
{
    const auto ground = pointer_.Ground();
    return ground ? PlaceText(document_.Data(), ground->x, ground->z) : std::string();
}

std::string Readout::Height() const
{
    const auto ground = pointer_.Ground();
    if (!ground)
        return {};
    const GroundModel& model = document_.Ground();
    return HeightText(document_.Data(), model.MetresAt(ground->x, ground->z)) + "   " +
           SlopeText(model.SlopeAt(ground->x, ground->z));
}

}  // namespace tessara
