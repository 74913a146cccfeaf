#pragma once

#include "textures/elevation_palette.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessara {

/// How heights are coloured: a ramp of colours over a range of heights in metres.
struct HeightColors {
    std::string ramp;   ///< one of PaletteNames, or empty for colours of its own
    double low = 0.0;   ///< gets the ramp's first colour, with everything below
    double high = 1.0;  ///< gets the last one, with everything above

    /// Where the ramp has no name.
    std::shared_ptr<const ElevationPalette> own{};

    /// Level of the sea that is shown, in metres. What it covers is blue by its depth, down to `low`, and a named ramp
    /// begins above it.
    std::optional<double> sea{};

    bool operator==(const HeightColors&) const = default;
};

/// The colours of the ramp, from entry 0 for the lowest height to 255 for the highest.
ElevationPalette RampOf(const HeightColors& colors);

/// The colours as tables of 256 entries for the land and as many for the sea, from low to high. A height gets the entry
/// at or below it, as the surface takes it too.
class HeightTable {
public:
    using Color = std::array<std::uint8_t, 3>;  ///< red, green, blue
    struct Span {
        double low;
        double scale;  ///< metres to entries

        std::size_t EntryOf(double metres) const
        {
            return static_cast<std::size_t>(std::clamp((metres - low) * scale + 0.002, 0.0, 255.0));
        }
    };

    explicit HeightTable(const HeightColors& colors);

    /// The sea's entries, then the land's.
    const std::array<Color, 512>& Colors() const noexcept { return colors_; }
    const Span& Land() const noexcept { return land_; }
    const Span& Water() const noexcept { return water_; }

    Color LandAt(double metres) const { return colors_[256 + land_.EntryOf(metres)]; }
    Color WaterAt(double metres) const { return colors_[water_.EntryOf(metres)]; }

    /// By the height alone. \param metres
    Color At(double metres) const { return sea_ && metres <= *sea_ ? WaterAt(metres) : LandAt(metres); }

private:
    std::optional<double> sea_;
    Span land_;
    Span water_;
    std::array<Color, 512> colors_;
};

struct ElevationData;
struct Sea;

/// A map of the colours, three bytes a point, from the north-west one on. \param sea of the terrain, or null
/// \param width,height points, evenly spread
std::vector<std::uint8_t> MapOfHeights(const ElevationData& data, const HeightColors& colors, const Sea* sea, int width,
                                       int height);

/// Gives the palette of a terrain the colours of a ramp.
/// \param target its entries 0 to 255 stand for heights from `bottom` to `top` in metres
void ColorPalette(ElevationPalette& target, double bottom, double top, const HeightColors& colors);

}  // namespace tessara
