#include "host/elevation/height_unit.h"

#include <algorithm>

namespace tessara {
namespace {

struct KnownUnit {
    std::string_view name;  // in lower case
    double metres;
};

constexpr double kFoot = 0.3048;
constexpr double kSurveyFoot = 1200.0 / 3937.0;

constexpr KnownUnit kUnits[] = {
    {"", 1.0},
    {"m", 1.0},
    {"metre", 1.0},
    {"metres", 1.0},
    {"meter", 1.0},
    {"meters", 1.0},
    {"ft", kFoot},
    {"foot", kFoot},
    {"feet", kFoot},
    {"us survey foot", kSurveyFoot},
    {"us survey feet", kSurveyFoot},
    {"us-ft", kSurveyFoot},
    {"ftus", kSurveyFoot},
    {"foot_us", kSurveyFoot},
    {"dm", 0.1},
    {"decimetre", 0.1},
    {"decimeter", 0.1},
    {"decimeters", 0.1},
    {"cm", 0.01},
    {"centimetre", 0.01},
    {"centimeter", 0.01},
    {"mm", 0.001},
    {"millimetre", 0.001},
    {"millimeter", 0.001},
    {"km", 1000.0},
    {"kilometre", 1000.0},
    {"kilometer", 1000.0},
};

}  // namespace

std::optional<HeightUnit> KnownHeightUnit(std::string_view name)
{
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    const auto* unit =
        std::find_if(std::begin(kUnits), std::end(kUnits), [&](const KnownUnit& known) { return known.name == lower; });
    if (unit == std::end(kUnits))
        return std::nullopt;
    if (unit->metres == 1.0)
        return HeightUnit{};
    return HeightUnit{unit->metres, std::string(name),
                      "Heights were converted to metres from the file's unit, " + std::string(name) + "."};
}

HeightUnit HeightUnitOf(std::string_view name)
{
    if (const std::optional<HeightUnit> known = KnownHeightUnit(name))
        return *known;
    return {1.0, {}, "The file's unit of heights, " + std::string(name) + ", is not known; they were taken as metres."};
}

}  // namespace tessara
