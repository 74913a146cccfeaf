#pragma once

#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace tessara {

/// What a program remembers beside the values of a terrain: a number, which is finite, or a text in UTF-8.
using ProjectSetting = std::variant<double, std::string>;

/// By name.
using ProjectSettings = std::map<std::string, ProjectSetting, std::less<>>;

/// \return the number of that name, or `otherwise` where there is none
inline double NumberOf(const ProjectSettings& settings, std::string_view name, double otherwise)
{
    const auto found = settings.find(name);
    const double* number = found == settings.end() ? nullptr : std::get_if<double>(&found->second);
    return number ? *number : otherwise;
}

/// \return the text of that name, or an empty one
inline std::string TextOf(const ProjectSettings& settings, std::string_view name)
{
    const auto found = settings.find(name);
    const std::string* text = found == settings.end() ? nullptr : std::get_if<std::string>(&found->second);
    return text ? *text : std::string();
}

}  // namespace tessara
