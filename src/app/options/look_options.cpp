#include "app/options/look_options.h"

#include "app/options/number_list.h"
#include "app/options/text_checks.h"
#include "app/view/palettes.h"
#include "host/project/project_view.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

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
}

void Remember(const LookOptions& look, ProjectView& remembered)
{
    remembered.sun = look.sun;
    remembered.palette = look.palette;
}

}  // namespace tessara
