#include "host/storage/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tessara {

std::optional<FileLock> FileLock::Try(const std::string& path, Open open)
{
    const int flags = open == Open::New ? O_CREAT | O_EXCL : O_NOFOLLOW | O_NONBLOCK;
    const int file = ::open(path.c_str(), flags | O_RDWR | O_CLOEXEC, 0666);
    if (file < 0)
        return std::nullopt;
    FileLock lock(file);
    struct stat status {};
    if (flock(file, LOCK_EX | LOCK_NB) != 0 || fstat(file, &status) != 0)
        return std::nullopt;
    // Who cleans up may have taken the file away between the two steps.
    if (!S_ISREG(status.st_mode) || status.st_nlink == 0) {
        errno = EWOULDBLOCK;
        return std::nullopt;
    }
    return lock;
}

FileLock::~FileLock()
{
    if (file_ >= 0)
        close(file_);
}

}  // namespace tessara
