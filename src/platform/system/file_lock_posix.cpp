#include "platform/system/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tessara {

namespace {

bool KnowsNoLocks(int error)
{
    return error == ENOLCK || error == ENOSYS || error == EOPNOTSUPP || error == EINVAL;
}

}  // namespace

std::optional<FileLock> FileLock::Try(const std::string& path, Open open, unsigned mode)
{
    const bool isNew = open == Open::New;
    const int flags = isNew ? O_CREAT | O_EXCL : O_NOFOLLOW | O_NONBLOCK;
    const int file = ::open(path.c_str(), flags | O_RDWR | O_CLOEXEC, static_cast<mode_t>(mode));
    if (file < 0)
        return std::nullopt;
    FileLock lock(file);
    struct stat status {};
    const bool locked = flock(file, LOCK_EX | LOCK_NB) == 0 || (isNew && KnowsNoLocks(errno));
    if (!locked || fstat(file, &status) != 0) {
        const int error = errno;
        if (isNew)
            unlink(path.c_str());
        errno = error;
        return std::nullopt;
    }
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
