#include "app/viewer/work/project_look.h"

#include "app/view/aim.h"

#include <utility>

namespace tessara {

Look LookOf(const ViewSettings& settings, const HeightColors& colors)
{
    return {settings.exaggeration,
            colors,
            std::pair(settings.sunAzimuth, settings.sunHeight),
            settings.fog,
            settings.errorPixels,
            settings.fill,
            settings.vertexColors,
            settings.mixColors,
            settings.sourceTexture,
            SeaChoiceOf(settings)};
}

SeaChoice SeaChoiceOf(const ViewSettings& settings)
{
    SeaChoice choice;
    if (settings.sea != SeaMode::Auto)
        choice.shown = settings.sea == SeaMode::Shown;
    if (settings.seaLevel != 0.0)
        choice.level = settings.seaLevel;
    return choice;
}

ViewSettings WithLook(ViewSettings settings, const Look& look, double azimuth)
{
    const auto [direction, height] = look.sun.value_or(SunBeside(azimuth));
    settings.exaggeration = look.exaggeration;
    settings.sunAzimuth = direction;
    settings.sunHeight = height;
    settings.fog = look.fog;
    settings.errorPixels = look.errorPixels;
    settings.fill = look.fill;
    settings.vertexColors = look.vertexColors;
    settings.mixColors = look.mixColors;
    settings.sea = !look.sea.shown ? SeaMode::Auto : *look.sea.shown ? SeaMode::Shown : SeaMode::Hidden;
    settings.seaLevel = look.sea.level.value_or(0.0);
    settings.ramp = look.colors.ramp;
    settings.frozen = false;
    return settings;
}

}  // namespace tessara
