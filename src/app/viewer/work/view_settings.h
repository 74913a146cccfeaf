#pragma once

#include "app/view/look.h"
#include "app/viewer/terrain/height_brush.h"

#include <string>

namespace tessara {

/// Whether water is shown: as the heights have it, or in any case, or never.
enum class SeaMode { Auto, Shown, Hidden };

/// What a person can set about the picture. The values given here are the first ones; AllSettings says the rest of
/// each.
struct ViewSettings {
    double errorPixels = 1.5;  ///< height errors smaller than this many pixels are left; smaller is finer
    double exaggeration = 1.0;
    FillMode fill = FillMode::Filled;
    bool vertexColors = true;
    bool mixColors = false;     ///< height colours are mixed into the picture of the ground
    bool sourceTexture = true;  ///< the imported picture of the ground is shown where there is one
    double sunAzimuth = 305.0;  ///< compass direction in degrees
    double sunHeight = 38.0;    ///< degrees above the horizon
    double fog = 0.3;           ///< 0 for none to 1
    bool realTime = false;      ///< heights may change, and the brush works
    BrushSettings brush;
    SeaMode sea = SeaMode::Auto;
    double seaLevel = 0.0;  ///< metres
    std::string ramp = "natural";
    bool levelColors = false;
    bool nodeBoxes = false;
    bool frozen = false;  ///< the detail stays as it is while the camera moves on
};

}  // namespace tessara
