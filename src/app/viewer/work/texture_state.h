#pragma once

#include <string>

struct ITessara;

namespace tessara {

class ProjectPlace;

/// What is on the ground of a terrain, but for the image itself: enough to tell whether a person has changed it.
struct TextureState {
    std::string detail;  ///< the detail texture's key, its table and its database
    std::string table;
    std::string database;
    bool usesDetail = false;
    bool usesSource = false;
    float tilingX = 0.0f;
    float tilingY = 0.0f;
    int gamma = 0;
    unsigned images = 0;  ///< so many were imported

    bool operator==(const TextureState&) const = default;
};

/// As it is now. \param images so many were imported
TextureState TexturesOf(ITessara& surface, unsigned images);

/// Puts the detail texture that a project names in the place of the one of a state: the surface has another one where
/// its dialog came up during the load. \throws std::bad_alloc
void TakeSavedDetail(TextureState& state, ProjectPlace& saved);

}  // namespace tessara
