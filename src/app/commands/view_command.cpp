#include "app/commands/commands.h"
#include "app/input/loaded_terrain.h"
#include "app/options/terrain_options.h"
#include "app/viewer/view_request.h"
#include "host/module_path.h"
#include "platform/ui/window_system.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <dlfcn.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

namespace tessara {

namespace {

/// The viewer and its toolkit, which no other command needs, lie in a library of their own, beside the component. It
/// stays loaded.
ViewerEntry LoadViewer()
{
    const std::filesystem::path path = std::filesystem::path(FindModulePath()).replace_filename(TESSARA_VIEWER_LIBRARY);
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        throw std::runtime_error(std::string("The viewer isn't installed completely: ") + dlerror() + ".");
    const auto entry = reinterpret_cast<ViewerEntry>(dlsym(library, kViewerEntry));
    if (!entry)
        throw std::runtime_error("The viewer's library belongs to another version of the program.");
    return entry;
}

void View(const TerrainInput& input)
{
    RefuseIdleOptions(input);
    SetWindowSystem(nullptr);
    const ViewRequest request{input.file, input.element, input.reading, input.exaggeration.value_or(0.0)};
    switch (LoadViewer()(request)) {
    case ViewResult::Done:
        return;
    case ViewResult::NoDisplay:
        throw std::runtime_error("The viewer needs a display, and none answers. Without one, \"tessara render " +
                                 (input.file.empty() ? std::string() : input.file + " ") +
                                 "-o picture.png\" draws a picture into a file.");
    case ViewResult::Failed:
        throw std::runtime_error("The viewer couldn't be opened.");
    }
}

}  // namespace

void AddViewCommand(CLI::App& program)
{
    const auto input = std::make_shared<TerrainInput>();
    CLI::App& command = *program.add_subcommand("view", "Explore a terrain in a window")->group("Commands");
    AddTerrainInput(command, *input);
    command.callback([input] { View(*input); });
}

}  // namespace tessara
