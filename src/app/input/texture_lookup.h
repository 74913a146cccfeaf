#pragma once

#include "host/textures/database_place.h"
#include "host/textures/texture_store.h"

#include <functional>
#include <optional>
#include <string>

namespace tessara {

/// Key of the detail texture that has the name as its key, or else as its display name.
std::optional<std::string> KeyOf(TextureStore& store, const std::string& name);

/// Works with a database of textures. One that can't be used is told in a sentence, and passed over.
void TryDatabase(const DatabasePlace& place, const std::function<void(TextureStore&)>& use);

/// A detail texture and the database that has it.
struct DetailTexture {
    std::string key;
    std::string displayName;
    bool ofUser = false;
};

/// Looks a detail texture up by key or display name, among the user's own first.
/// \throws std::runtime_error where no database has it
DetailTexture FindDetailTexture(const std::string& name);

}  // namespace tessara
