#include "host/storage/own_folder.h"
#include "host/storage/user_folders.h"
#include "host/textures/database_place.h"

#include <filesystem>

namespace tessara {

namespace {

namespace fs = std::filesystem;

constexpr const char* kSystemFile = "textures.db";

}  // namespace

DatabasePlace SystemDatabase()
{
    const fs::path own = OwnFolder();
    const fs::path installed = own / TESSARA_LIBRARY_TO_DATA / kSystemFile;
    const fs::path built = own / ".." / "share" / "tessara" / kSystemFile;
    std::error_code error;
    const fs::path& found = fs::exists(installed, error) ? installed : built;
    return {found.lexically_normal().string(), false};
}

DatabasePlace UserDatabase()
{
    return {(UserDataFolder() / "tessara" / "textures.db").string(), true};
}

}  // namespace tessara
