#include "app/options/look_options.h"

#include "app/options/number_list.h"
#include "app/options/text_checks.h"
#include "app/view/palettes.h"
#include "host/project/project_view.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cmath>

namespace tessara {

void AddLookOptions(CLI::App& command, LookOptions& look)
{
    command
        .add_option_function<std::string>(
            "--sun",
            [&look](const std::string& text) {
                const auto numbers = ParseNumbers(text, ',', 2);
                if (numbers.empty() || numbers[1] < 0.0 || numbers[1] > 90.0)
                    throw CLI::ValidationError("--sun", "expects a compass direction and a height from 0 to 90 such as "
                                                        "315,40, not " +
                                                            text);
                look.sun = {numbers[0], numbers[1]};
            },
            "Compass direction and height of the sun in degrees\n[left of the camera, 38 high]")
        ->option_text("DIRECTION,HEIGHT");
    command.add_option("--palette", look.palette, "Colours of the heights [natural, or those of the project]")
        ->check(OneOf(PaletteNames()))
        ->option_text("natural|classic|desert|grey");
    AddSeaOption(command, look.sea);
}

void AddSeaOption(CLI::App& command, std::optional<SeaChoice>& sea)
{
    command
        .add_option_function<std::string>(
            "--sea",
            [&sea](const std::string& text) {
                const auto numbers = ParseNumbers(text, ',', 1);
                if (text == "auto")
                    sea = SeaChoice{};
                else if (text == "off")
                    sea = SeaChoice{false, {}};
                else if (!numbers.empty() && std::fabs(numbers[0]) <= 1e6)
                    sea = SeaChoice{true, numbers[0]};
                else
                    throw CLI::ValidationError("--sea", "expects a height in metres, auto or off, not " + text);
            },
            "Water over all ground up to a height in metres; auto shows a\n"
            "sea at 0 m that reaches the terrain's edge [auto, or as in\nthe project]")
        ->option_text("LEVEL|auto|off");
}

void Remember(const LookOptions& look, ProjectView& remembered)
{
    remembered.sun = look.sun;
    remembered.palette = look.palette;
    if (look.sea) {
        remembered.sea = look.sea->shown;
        remembered.seaLevel = look.sea->level;
    }
}

}  // namespace tessara
