#pragma once

#include "host/textures/texture_store.h"

#include <memory>
#include <string>

namespace tessara {

/// Which file, and who may write to it.
struct DatabasePlace {
    std::string path;
    bool writable = false;

    /// Opens the file. \return null for a writable place without a file, which counts as an empty database
    /// \throws StorageError; std::bad_alloc
    std::unique_ptr<TextureStore> Open() const;
};

/// The database that is installed with the library, or lies in its build tree. Nobody writes to it.
DatabasePlace SystemDatabase();

/// The database in the user's data folder: $XDG_DATA_HOME/tessara, or ~/.local/share/tessara. Made by the first
/// element.
DatabasePlace UserDatabase();

}  // namespace tessara
