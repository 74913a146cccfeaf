#include "host/storage/replacement_file.h"
#include "host/storage/sqlite_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>

namespace tessara {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = ".tessara-";
constexpr std::string_view kSuffix = ".saving";
constexpr int kMostTries = 100;

[[noreturn]] void Fail(const std::string& target, const std::string& why)
{
    throw StorageError("Can't write \"" + target + "\": " + why);
}

[[noreturn]] void FailWith(const std::string& target, int error)
{
    Fail(target, std::generic_category().message(error));
}

fs::path FolderOf(const std::string& target)
{
    const fs::path folder = fs::path(target).parent_path();
    return folder.empty() ? "." : folder;
}

/// The file that a path leads to.
std::string Followed(const std::string& path)
{
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(path, error)))
        return path;
    const fs::path found = fs::canonical(path, error);
    if (error)
        Fail(path, "it is a link to a file that isn't there");
    return found.string();
}

/// Takes away what killed processes left: versions that nobody holds the lock of.
void CleanUp(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix))
            continue;
        if (FileLock::Try(entry->path().string(), FileLock::Open::Existing))
            unlink(entry->path().c_str());
    }
}

std::string RandomName()
{
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, std::random_device()(), 16);
    return std::string(kPrefix) + std::string(digits, end.ptr) + std::string(kSuffix);
}

}  // namespace

ReplacementFile::ReplacementFile(const std::string& target) : target_(Followed(target)), file_(MakeBeside()) {}

FileLock ReplacementFile::MakeBeside()
{
    struct stat status {};
    replacesFile_ = stat(target_.c_str(), &status) == 0;
    if (replacesFile_) {
        if (!S_ISREG(status.st_mode))
            Fail(target_, S_ISDIR(status.st_mode) ? "it is a folder" : "it is no regular file");
        if (faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0)
            FailWith(target_, errno);
        mode_ = status.st_mode & 07777u;
    } else if (errno != ENOENT) {
        FailWith(target_, errno);
    }
    const fs::path folder = FolderOf(target_);
    CleanUp(folder);
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        path_ = (folder / RandomName()).string();
        if (auto file = FileLock::Try(path_, FileLock::Open::New))
            return std::move(*file);
        if (errno != EEXIST && errno != EWOULDBLOCK)
            break;
    }
    FailWith(target_, errno);
}

ReplacementFile::~ReplacementFile()
{
    if (!placed_)
        unlink(path_.c_str());
}

void ReplacementFile::PutInPlace()
{
    const auto check = [this](int result) {
        if (result != 0)
            FailWith(target_, errno);
    };
    if (replacesFile_)
        check(fchmod(file_.File(), mode_));
    check(fsync(file_.File()));
    check(std::rename(path_.c_str(), target_.c_str()));
    placed_ = true;
    // The name as well, for a machine that loses its power.
    const int folder = open(FolderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

}  // namespace tessara
