#pragma once

#include <string>

namespace tessara {

/// A place beside a file for what is to become that file: so the file appears under its name in full or not at all, and
/// one that was there before stays as it is until then. What stands at the place is gone unless Commit is called.
class TemporaryFile {
public:
    /// \param target the file's name. Nothing is created yet.
    explicit TemporaryFile(const std::string& target);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    const std::string& Path() const noexcept { return path_; }

    /// Gives the file its name. \throws std::runtime_error with one sentence that names it
    void Commit();

private:
    std::string target_;
    std::string path_;
};

/// Checks, before long work, that a file can be written: its folder is there and it is no folder itself, nor the file
/// that the work reads. \param source may be empty \throws std::runtime_error with one sentence that names it
void RequireWritable(const std::string& target, const std::string& source);

}  // namespace tessara
