#pragma once

#include <string>

namespace tessara {

/// The table of detail textures, on which everything works that names no other.
inline constexpr const char* kDetailTable = "TerrainTextureDetail";

/// Which file, and who may write to it.
struct DatabasePlace {
    std::string path;
    bool writable = false;
};

/// The database that is installed with the library, or lies in its build tree. Nobody writes to it.
DatabasePlace SystemDatabase();

/// The database in the user's data folder: $XDG_DATA_HOME/tessara, or ~/.local/share/tessara. Made by the first
/// element.
DatabasePlace UserDatabase();

}  // namespace tessara
