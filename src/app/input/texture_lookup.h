#pragma once

#include "host/textures/texture_store.h"

#include <optional>
#include <string>

namespace tessara {

/// Key of the detail texture that has the name as its key, or else as its display name.
std::optional<std::string> KeyOf(TextureStore& store, const std::string& name);

}  // namespace tessara
