#pragma once

#include <string>

struct ITessara;

namespace tessara {

class ProjectPlace;

/// Whether a terrain has a picture on its ground, shown or not. The OpenGL context is current, and stays as it is.
bool HasSource(ITessara& surface);

/// Puts the textures of a terrain in a project on its surface, whose host has the texture service and the databases.
/// Switches that are on for textures that it doesn't have go off. The OpenGL context is current; the surface may open
/// its dialog for a detail texture that is gone.
/// \return name of the detail texture where it is in no database any more, else empty
/// \throws std::runtime_error with one sentence that names the terrain
std::string TakeSavedTextures(ITessara& surface, ProjectPlace& saved);

}  // namespace tessara
