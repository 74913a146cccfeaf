#include "app/viewer/work/setting_table.h"

#include "app/view/palettes.h"
#include "app/viewer/picture/view_text.h"
#include "app/viewer/work/typed_number.h"
#include "platform/system/number_text.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace tessara {

namespace {

using Kind = Setting::Kind;
using Kept = Setting::Kept;
using Group = SettingGroup;

/// A field of the settings, or of the brush among them.
template <auto Member, class Settings>
auto& FieldOf(Settings& settings)
{
    if constexpr (requires { settings.*Member; })
        return settings.*Member;
    else
        return settings.brush.*Member;
}

template <auto Member>
double Get(const ViewSettings& settings)
{
    return static_cast<double>(FieldOf<Member>(settings));
}

template <auto Member>
void Set(ViewSettings& settings, double value)
{
    auto& field = FieldOf<Member>(settings);
    using Type = std::remove_reference_t<decltype(field)>;
    if constexpr (std::is_enum_v<Type>)
        field = static_cast<Type>(static_cast<int>(value));
    else
        field = static_cast<Type>(value);
}

std::string PixelsText(double pixels)
{
    return FixedText(pixels, pixels < 10.0 ? 2 : 1) + " pixels";
}

std::string FactorText(double factor)
{
    return "× " + FixedText(factor, 2);
}

std::string DegreesText(double degrees)
{
    return FixedText(degrees, 0) + "°";
}

std::string PercentText(double share)
{
    return FixedText(share * 100.0, 0) + " %";
}

std::vector<Setting::Option> Ramps()
{
    std::vector<Setting::Option> ramps;
    for (const std::string& name : PaletteNames()) {
        ramps.push_back({name, name});
        char& first = ramps.back().label[0];
        first = static_cast<char>(std::toupper(static_cast<unsigned char>(first)));
    }
    return ramps;
}

double GetRamp(const ViewSettings& settings)
{
    const std::vector<std::string> names = PaletteNames();
    const auto found = std::find(names.begin(), names.end(), settings.ramp);
    return found == names.end() ? -1.0 : static_cast<double>(found - names.begin());
}

void SetRamp(ViewSettings& settings, double index)
{
    settings.ramp = index < 0.0 ? std::string() : PaletteNames()[static_cast<std::size_t>(index)];
}

template <auto Member>
Setting Switch(const char* name, Kept kept, Group group, const char* label, const char* help)
{
    return {.name = name,
            .kind = Kind::Switch,
            .kept = kept,
            .group = group,
            .label = label,
            .help = help,
            .get = &Get<Member>,
            .set = &Set<Member>};
}

/// What a slider sets.
template <auto Member>
Setting Slider(const char* name, Kept kept, Group group, const char* label, const char* help, double low, double high,
               int steps, std::string (*text)(double))
{
    return {.name = name,
            .kind = Kind::Number,
            .kept = kept,
            .group = group,
            .label = label,
            .help = help,
            .get = &Get<Member>,
            .set = &Set<Member>,
            .low = low,
            .high = high,
            .steps = steps,
            .text = text};
}

template <auto Member>
Setting Choice(const char* name, Kept kept, Group group, const char* label, const char* help,
               std::vector<Setting::Option> options)
{
    return {.name = name,
            .kind = Kind::Choice,
            .kept = kept,
            .group = group,
            .label = label,
            .help = help,
            .get = &Get<Member>,
            .set = &Set<Member>,
            .options = std::move(options)};
}

Setting Logarithmic(Setting setting, double mark = 0.0)
{
    setting.logarithmic = true;
    setting.mark = mark;
    return setting;
}

using V = ViewSettings;

Setting SeaLevel()
{
    Setting level = Slider<&V::seaLevel>("Sea/Level", Kept::Run, Group::Sea, "Level", "Height of the water", -12000.0,
                                         9000.0, 300, &LengthText);
    level.set = [](ViewSettings& settings, double value) { settings.seaLevel = std::round(value); };
    return level;
}

std::vector<Setting> MakeTable()
{
    return {
        Logarithmic(
            Slider<&V::errorPixels>("View/ErrorPixels", Kept::Program, Group::Terrain, "Error allowed",
                                    "Level of detail: height errors smaller than this stay. To the left it is finer.",
                                    0.25, 32.0, 200, &PixelsText)),
        Logarithmic(Slider<&V::exaggeration>("View/Exaggeration", Kept::Program, Group::Terrain, "Exaggeration",
                                             "Factor on the heights; 1 shows true proportions", 0.1, 10.0, 200,
                                             &FactorText),
                    1.0),
        Choice<&V::fill>("View/Fill", Kept::Program, Group::Terrain, "Draw",
                         "Surface, edges or corners of the triangles",
                         {{"filled", "Filled"}, {"wireframe", "Wireframe"}, {"points", "Points"}}),
        Slider<&V::sunAzimuth>("Light/SunAzimuth", Kept::Program, Group::Light, "Sun from",
                               "Compass direction that the sun shines from", 0.0, 360.0, 72, &DegreesText),
        Slider<&V::sunHeight>("Light/SunHeight", Kept::Program, Group::Light, "Height of the sun",
                              "Degrees above the horizon", 1.0, 90.0, 89, &DegreesText),
        Slider<&V::fog>("Light/Fog", Kept::Program, Group::Light, "Fog", "How much of what is far fades", 0.0, 1.0, 100,
                        &PercentText),
        Switch<&V::vertexColors>("View/VertexColors", Kept::Program, Group::HeightColors, "Colour by height",
                                 "Without, the ground is of one light colour"),
        {.name = "Colors/Ramp",
         .kind = Kind::Choice,
         .kept = Kept::Program,
         .group = Group::HeightColors,
         .label = "Ramp",
         .help = "Colours from low to high",
         .get = &GetRamp,
         .set = &SetRamp,
         .options = Ramps()},
        Choice<&V::sea>("Sea/Shown", Kept::Run, Group::Sea, "Sea", "Whether water is shown over the ground",
                        {{"auto", "By the heights"}, {"on", "Shown"}, {"off", "Hidden"}}),
        SeaLevel(),
        Switch<&V::sourceTexture>("View/SourceTexture", Kept::Program, Group::GroundPicture, "Show the source texture",
                                  "Show or hide the picture on the terrain"),
        Switch<&V::mixColors>("View/MixColors", Kept::Program, Group::GroundPicture, "Mix in the height colours",
                              "Without, the picture shows its own colours"),
        Switch<&V::realTime>("Sculpt/RealTime", Kept::Program, Group::Brush, "Real-time mode",
                             "Let the heights be changed"),
        Choice<&BrushSettings::kind>(
            "Sculpt/Brush", Kept::Program, Group::None, "Brush", "What the left mouse button does",
            {{"raise", "Raise"}, {"lower", "Lower"}, {"smooth", "Smooth"}, {"flatten", "Flatten"}}),
        Logarithmic(Slider<&BrushSettings::radius>("Sculpt/Radius", Kept::Program, Group::Brush, "Radius",
                                                   "How far the brush reaches", 0.01, 1e6, 200, &LengthText)),
        Slider<&BrushSettings::strength>("Sculpt/Strength", Kept::Program, Group::Brush, "Strength",
                                         "How quickly it works", 0.01, 1.0, 99, &PercentText),
        Switch<&V::levelColors>("Debug/LevelColors", Kept::Run, Group::Detail, "Colours of the levels",
                                "Colour triangles by the size of their nodes"),
        Switch<&V::nodeBoxes>("Debug/NodeBoxes", Kept::Run, Group::Detail, "Boxes of the drawn nodes",
                              "Draw the boxes of the nodes that are drawn"),
        Switch<&V::frozen>("Debug/Frozen", Kept::Run, Group::Detail, "Freeze the detail",
                           "Keep the detail while the camera moves on"),
    };
}

}  // namespace

std::span<const Setting> AllSettings()
{
    static const std::vector<Setting> table = MakeTable();
    return table;
}

void Setting::Take(ViewSettings& settings, double value) const
{
    if (!std::isnan(value))
        set(settings, std::clamp(value, low, high));
}

std::string Setting::TextOf(const ViewSettings& settings) const
{
    const double value = get(settings);
    switch (kind) {
    case Kind::Number:
        return FixedText(value, 4);
    case Kind::Switch:
        return value != 0.0 ? "1" : "0";
    case Kind::Choice:
        break;
    }
    return value < 0.0 ? std::string() : options[static_cast<std::size_t>(value)].name;
}

void Setting::TakeText(ViewSettings& settings, std::string_view stored) const
{
    if (kind == Kind::Choice) {
        for (std::size_t i = 0; i < options.size(); ++i) {
            if (options[i].name == stored)
                set(settings, static_cast<double>(i));
        }
    } else if (kind == Kind::Number || stored == "0" || stored == "1") {
        if (const auto value = WholeText<double>(stored))
            Take(settings, *value);
    }
}

BrushRadii::BrushRadii(double across) : low(std::max(across * 0.002, 0.01)), high(std::max(across * 0.25, 0.1)) {}

double BrushRadii::Nearest(double radius) const
{
    return std::clamp(radius, low, high);
}

}  // namespace tessara
