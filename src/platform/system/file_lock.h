#pragma once

#include "platform/com/types.h"

#include <optional>
#include <string>
#include <utility>

namespace tessara {

/// An open file that tells other processes that somebody works with it. The lock goes with this object, or with the
/// process however it ends.
class TESSARA_EXPORT FileLock {
public:
    enum class Open {
        New,       ///< a file that isn't there yet
        Existing,  ///< one that is
    };

    /// Opens a regular file and locks it at once. A new file is locked where its file system knows locks at all.
    /// \param mode permissions of a new file, less those that the process gives to nobody
    /// \return nothing when it can't be opened or somebody else holds its lock; the system's error tells which
    static std::optional<FileLock> Try(const std::string& path, Open open, unsigned mode = 0666);

    FileLock(FileLock&& other) noexcept : file_(std::exchange(other.file_, -1)) {}
    FileLock& operator=(FileLock&& other) noexcept
    {
        std::swap(file_, other.file_);
        return *this;
    }
    ~FileLock();

    /// The file's descriptor, open for reading and writing.
    int File() const noexcept { return file_; }

private:
    explicit FileLock(int file) noexcept : file_(file) {}

    int file_;
};

}  // namespace tessara
