#pragma once

#include "app/view/sea.h"

#include <optional>
#include <string>
#include <utility>

namespace CLI {
class App;
}

namespace tessara {

struct ProjectView;

/// Light and colours of a picture. What isn't set is chosen by the command.
struct LookOptions {
    std::optional<std::pair<double, double>> sun;  ///< compass direction and height in degrees
    std::string palette;                           ///< one of PaletteNames, or empty
    std::optional<SeaChoice> sea{};
};

/// Adds the options to a command. \param look outlives the command
void AddLookOptions(CLI::App& command, LookOptions& look);

/// Adds the option for the sea alone. \param sea outlives the command
void AddSeaOption(CLI::App& command, std::optional<SeaChoice>& sea);

/// What was asked for, added to what a project is to remember. A sea left to the heights is to be forgotten beforehand.
void Remember(const LookOptions& look, ProjectView& remembered);

}  // namespace tessara
