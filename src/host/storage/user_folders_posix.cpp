#include "host/storage/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace tessara {

namespace {

namespace fs = std::filesystem;

fs::path HomeFolder()
{
    if (const char* home = std::getenv("HOME"); home && *home)
        return home;
    const passwd* user = getpwuid(getuid());
    return user && user->pw_dir ? user->pw_dir : "/";
}

/// \param variable a relative path there is to be ignored
fs::path UserFolder(const char* variable, const char* below)
{
    const char* folder = std::getenv(variable);
    return folder && *folder == '/' ? fs::path(folder) : HomeFolder() / below;
}

}  // namespace

fs::path UserDataFolder()
{
    return UserFolder("XDG_DATA_HOME", ".local/share");
}

fs::path UserStateFolder()
{
    return UserFolder("XDG_STATE_HOME", ".local/state");
}

}  // namespace tessara
