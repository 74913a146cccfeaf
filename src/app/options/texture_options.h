#pragma once

#include <string>

namespace CLI {
class App;
}

struct ITessara;

namespace tessara {

/// What a terrain is covered with.
struct TextureOptions {
    std::string source;     ///< image that is stretched over the terrain, north up; empty for none
    std::string detail;     ///< key or display name of a detail texture; empty for none
    float tilingX = 16.0f;  ///< repeats of the detail texture from west to east
    float tilingY = 16.0f;  ///< and from north to south
    bool brighten = false;  ///< twice the brightness under the detail texture
    bool color = true;      ///< colours of the heights
};

/// Adds the options to a command. \param options outlives the command
void AddTextureOptions(CLI::App& command, TextureOptions& options);

/// Puts the textures on a surface, whose host has the texture service and the databases. The OpenGL context is current.
/// \throws std::runtime_error with one sentence that names the image or the texture
void ApplyTextures(ITessara& surface, const TextureOptions& options);

}  // namespace tessara
