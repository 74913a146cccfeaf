#pragma once

#include "textures/elevation_palette.h"

#include <memory>
#include <string>
#include <vector>

namespace tessara {

/// Names of the palettes to choose from, the one to prefer first.
std::vector<std::string> PaletteNames();

/// A palette by its name, one of PaletteNames.
std::unique_ptr<ElevationPalette> MakePalette(const std::string& name);

}  // namespace tessara
