#include "host/storage/file_version.h"

#include <sys/stat.h>

namespace tessara {

std::optional<FileVersion> VersionOf(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileVersion{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace tessara
