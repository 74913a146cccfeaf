#include "app/view/height_colors.h"

#include "app/view/palettes.h"

#include <algorithm>
#include <cmath>

namespace tessara {

ElevationPalette RampOf(const HeightColors& colors)
{
    return colors.ramp.empty() && colors.own ? *colors.own : *MakePalette(colors.ramp);
}

void ColorPalette(ElevationPalette& target, double bottom, double top, const HeightColors& colors)
{
    const ElevationPalette ramp = RampOf(colors);
    const double range = std::max(colors.high - colors.low, 1e-6);
    for (std::int16_t index = 0; index < 256; ++index) {
        const double metres = bottom + (top - bottom) * index / 255.0;
        const double share = std::clamp((metres - colors.low) / range, 0.0, 1.0);
        const auto source = static_cast<std::int16_t>(std::lround(share * 255.0));
        target.SetRed(index, ramp.GetRed(source));
        target.SetGreen(index, ramp.GetGreen(source));
        target.SetBlue(index, ramp.GetBlue(source));
    }
}

}  // namespace tessara
