#pragma once

#include "platform/com/types.h"

#include <string>

namespace tessara {

/// A file that is gone when the process is interrupted while this object lives. It need not exist.
class TESSARA_EXPORT UnfinishedFile {
public:
    /// \param path absolute
    explicit UnfinishedFile(const std::string& path) noexcept;
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

private:
    int slot_;  // -1 where there is no room for another one
};

/// From now on Ctrl+C, the end of the terminal and a request to end remove all unfinished files of this process before
/// they do what they did before. A signal that is ignored stays so. For programs: a library leaves signals alone.
TESSARA_EXPORT void RemoveUnfinishedFilesWhenInterrupted() noexcept;

}  // namespace tessara
