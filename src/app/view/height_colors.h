#pragma once

#include "textures/elevation_palette.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

namespace tessara {

/// How heights are coloured: a ramp of colours over a range of heights in metres.
struct HeightColors {
    std::string ramp;   ///< one of PaletteNames, or empty for colours of its own
    double low = 0.0;   ///< gets the ramp's first colour, with everything below
    double high = 1.0;  ///< gets the last one, with everything above

    /// Where the ramp has no name.
    std::shared_ptr<const ElevationPalette> own{};

    bool operator==(const HeightColors&) const = default;
};

/// The colours of the ramp, from entry 0 for the lowest height to 255 for the highest.
ElevationPalette RampOf(const HeightColors& colors);

/// The entry of the ramp for a height in metres: the one at or below it, as the surface takes it too.
inline std::int16_t EntryOf(const HeightColors& colors, double metres)
{
    const double share = (metres - colors.low) / std::max(colors.high - colors.low, 1e-6);
    return static_cast<std::int16_t>(std::clamp(share * 255.0 + 0.002, 0.0, 255.0));
}

/// Gives the palette of a terrain the colours of a ramp.
/// \param target its entries 0 to 255 stand for heights from `bottom` to `top` in metres
void ColorPalette(ElevationPalette& target, double bottom, double top, const HeightColors& colors);

}  // namespace tessara
