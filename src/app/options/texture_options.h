#pragma once

#include <optional>
#include <string>
#include <utility>

namespace CLI {
class App;
}

struct ITessara;

namespace tessara {

class ConsoleProgress;
class ProjectPlace;
struct ProjectView;

/// What a terrain is covered with. What isn't set is as a project has it, or else: no image, no texture, 16 x 16
/// repeats, low brightness, colours of the heights.
struct TextureOptions {
    std::string source;                             ///< image that is stretched over the terrain, north up
    std::string detail;                             ///< key or display name of a detail texture
    std::optional<std::pair<float, float>> tiling;  ///< repeats of it from west to east and from north to south
    std::optional<bool> brighten;                   ///< twice the brightness under it
    bool withoutSource = false;                     ///< of a project
    bool withoutDetail = false;                     ///< likewise
    std::optional<bool> color;                      ///< colours of the heights
    std::optional<bool> mixColor;                   ///< the image multiplied by them, in place of its own colours
};

/// Adds the options to a command. \param options outlives the command
void AddTextureOptions(CLI::App& command, TextureOptions& options);

/// What was asked for of the colours, added to what a project is to remember.
void Remember(const TextureOptions& options, ProjectView& remembered);

/// Refuses options that are about a detail texture where there is none. \param hasDetail a project may bring one
/// \throws CLI::ValidationError
void RefuseIdleOptions(const TextureOptions& options, bool hasDetail);

/// Puts the textures on a surface, whose host has the texture service and the databases. The OpenGL context is current.
/// \param saved the terrain's place in a project, whose textures come first, or null
/// \throws std::runtime_error with one sentence that names the image or the texture
void ApplyTextures(ITessara& surface, ProjectPlace* saved, const TextureOptions& options, ConsoleProgress& progress);

/// Writes the textures into a project. What isn't set stays. \throws as ApplyTextures, and StorageError
void SaveTextures(ProjectPlace& place, const TextureOptions& options);

}  // namespace tessara
