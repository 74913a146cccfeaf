#pragma once

#include "platform/system/file_lock.h"

#include <optional>
#include <string>

namespace tessara {

/// Keeps other processes that want to write a file under a name away from it, from before they read what stands there
/// until they have replaced it. The lock is a hidden file beside it, which goes with this object; a killed process
/// leaves one behind that nobody holds and that the next writer takes.
class NameLock {
public:
    /// Waits while somebody else writes the file. Where no file can be made beside it there is no lock: then nobody can
    /// replace it either. \param target links followed \throws StorageError when it takes too long
    explicit NameLock(const std::string& target);
    NameLock(const NameLock&) = delete;
    NameLock& operator=(const NameLock&) = delete;
    ~NameLock();

private:
    std::string path_;
    std::optional<FileLock> lock_;
};

}  // namespace tessara
