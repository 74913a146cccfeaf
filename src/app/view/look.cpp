#include "app/view/look.h"

#include "app/view/height_span.h"
#include "app/view/palettes.h"
#include "host/project/project_place.h"
#include "host/project/project_terrain.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tessara {

namespace {

constexpr const char* kFog = "fog";
constexpr const char* kErrorPixels = "detail.pixels";
constexpr const char* kFill = "fill";
constexpr const char* kLow = "palette.low";
constexpr const char* kHigh = "palette.high";
constexpr const char* kFillNames[] = {"filled", "wireframe", "points"};

bool IsRamp(const std::string& name)
{
    const auto names = PaletteNames();
    return std::find(names.begin(), names.end(), name) != names.end();
}

HeightColors ColorsIn(const ProjectTerrain& terrain, const ProjectSettings& stored, const HeightSpan& span)
{
    if (!IsRamp(terrain.view.palette))
        return {{},
                static_cast<double>(terrain.data.minimum),
                static_cast<double>(terrain.data.maximum),
                std::make_shared<const ElevationPalette>(terrain.palette)};
    const double low = NumberOf(stored, kLow, static_cast<double>(span.lowest));
    const double high = NumberOf(stored, kHigh, static_cast<double>(span.highest));
    return {terrain.view.palette, low, std::max(high, low + 1e-3), nullptr};
}

}  // namespace

Look LookIn(const ProjectTerrain& terrain, const ProjectSettings& stored, const HeightSpan& span)
{
    Look look;
    look.exaggeration = terrain.exaggeration;
    look.colors = ColorsIn(terrain, stored, span);
    if (const auto& sun = terrain.view.sun)
        look.sun = {std::fmod(sun->first + 360.0, 360.0), sun->second};
    look.fog = std::clamp(NumberOf(stored, kFog, look.fog), 0.0, 1.0);
    look.errorPixels = std::clamp(NumberOf(stored, kErrorPixels, look.errorPixels), 0.25, 32.0);
    const auto fill = std::find(std::begin(kFillNames), std::end(kFillNames), TextOf(stored, kFill));
    if (fill != std::end(kFillNames))
        look.fill = static_cast<FillMode>(fill - std::begin(kFillNames));
    look.vertexColors = terrain.view.color.value_or(look.vertexColors);
    look.sea = {terrain.view.sea, terrain.view.seaLevel};
    look.mixColors = terrain.view.mixColors.value_or(look.mixColors);
    return look;
}

void RememberLook(ProjectPlace& place, const Look& look, const Look* before)
{
    const auto changed = [&](auto Look::*member) { return !before || look.*member != before->*member; };
    if (changed(&Look::fog))
        place.Set(kFog, look.fog);
    if (changed(&Look::errorPixels))
        place.Set(kErrorPixels, look.errorPixels);
    if (changed(&Look::fill))
        place.Set(kFill, std::string(kFillNames[static_cast<std::size_t>(look.fill)]));
    ProjectView view;
    if (changed(&Look::sea)) {
        ForgetSea(place);
        view.sea = look.sea.shown;
        view.seaLevel = look.sea.level;
    }
    if (changed(&Look::sun))
        view.sun = look.sun;
    if (changed(&Look::vertexColors))
        view.color = look.vertexColors;
    if (changed(&Look::mixColors))
        view.mixColors = look.mixColors;
    if (changed(&Look::colors)) {
        view.palette = look.colors.ramp;
        place.Set(kLow, look.colors.low);
        place.Set(kHigh, look.colors.high);
    }
    RememberView(place, view);
}

void WriteColors(ProjectPlace& place, const HeightColors& colors)
{
    ProjectTerrain terrain = ReadTerrainFrame(place);
    ColorPalette(terrain.palette, static_cast<double>(terrain.data.minimum), static_cast<double>(terrain.data.maximum),
                 colors);
    WritePalette(place, terrain.palette);
}

}  // namespace tessara
