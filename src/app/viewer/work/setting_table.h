#pragma once

#include "app/viewer/work/view_settings.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// Headings under which the pages of settings show them.
enum class SettingGroup { None, Terrain, Light, HeightColors, Sea, GroundPicture, Brush, Detail };

/// Everything that is known of a setting. From it come its control, its place in the file of settings and its limits.
struct Setting {
    enum class Kind { Number, Switch, Choice };

    /// For how long a value is kept. What a project keeps beside that is a Look.
    enum class Kept {
        Run,     ///< until the program ends
        Program  ///< until it is changed
    };

    /// One of a few values.
    struct Option {
        std::string name;   ///< as it is stored
        std::string label;  ///< as a person reads it
    };

    const char* name;  ///< group and entry in the file of settings
    Kind kind;
    Kept kept;
    SettingGroup group;
    const char* label;
    const char* help;

    // The value: a number, 0 or 1, or the index of the option. -1 stands for none of the options.
    double (*get)(const ViewSettings& settings);
    void (*set)(ViewSettings& settings, double value);

    // Of numbers.
    double low = 0.0;
    double high = 1.0;
    bool logarithmic = false;                     ///< equal ways of a slider multiply by equal factors
    int steps = 0;                                ///< of a slider from end to end; 0 for a field to type into
    double mark = 0.0;                            ///< a value that a slider finds again; 0 for none
    std::string (*text)(double value) = nullptr;  ///< with its unit

    std::vector<Option> options{};  ///< of choices

    /// Takes a number, or the nearest one that is allowed. What is none changes nothing.
    void Take(ViewSettings& settings, double value) const;

    // The value as it is stored. Numbers have a decimal point; a text that means no value changes nothing.
    std::string TextOf(const ViewSettings& settings) const;
    void TakeText(ViewSettings& settings, std::string_view text) const;
};

/// All settings, in the order of the pages.
std::span<const Setting> AllSettings();

/// Radii in metres that suit a terrain. \param across length of its longer side in metres
struct BrushRadii {
    explicit BrushRadii(double across);
    double Nearest(double radius) const;
    double low;
    double high;
};

}  // namespace tessara
