#pragma once

#include "host/storage/file_lock.h"

#include <string>

namespace tessara {

/// A new version of a file, written beside it and put in its place as a whole: whenever the process ends, the file
/// holds its old content or all of the new one. A version that isn't put in place goes with this object; what a killed
/// process left behind goes with the next version of any file in the folder.
class ReplacementFile {
public:
    /// Makes an empty file beside the target. \param target a regular file, a link to one, or a name that is free
    /// \throws StorageError that says why the target can't be written
    explicit ReplacementFile(const std::string& target);
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;
    ~ReplacementFile();

    /// Where the new version is to be written.
    const std::string& Path() const noexcept { return path_; }

    /// The file that it replaces, links followed.
    const std::string& Target() const noexcept { return target_; }

    bool ReplacesFile() const noexcept { return replacesFile_; }

    /// Sees to it that the bytes are on the disk, and lets them count. The new file has the permissions of the old one.
    /// \throws StorageError, with the target as it was
    void PutInPlace();

private:
    FileLock MakeBeside();

    std::string target_;
    bool replacesFile_ = false;
    unsigned mode_ = 0;
    std::string path_;
    FileLock file_;
    bool placed_ = false;
};

}  // namespace tessara
