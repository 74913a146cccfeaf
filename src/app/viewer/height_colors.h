#pragma once

#include "textures/elevation_palette.h"

#include <string>

namespace tessara {

/// How heights are coloured: a ramp of colours over a range of heights in metres.
struct HeightColors {
    std::string ramp;   ///< one of PaletteNames
    double low = 0.0;   ///< gets the ramp's first colour, with everything below
    double high = 1.0;  ///< gets the last one, with everything above
};

/// Gives the palette of a terrain the colours of a ramp.
/// \param target its entries 0 to 255 stand for heights from `bottom` to `top` in metres
void ColorPalette(ElevationPalette& target, double bottom, double top, const HeightColors& colors);

}  // namespace tessara
