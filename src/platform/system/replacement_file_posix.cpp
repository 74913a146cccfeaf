#include "platform/system/replacement_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <string_view>
#include <system_error>

namespace tessara {

namespace {

namespace fs = std::filesystem;
using Kind = ReplacementFile::Kind;

constexpr std::string_view kPrefix = ".tessara-";
constexpr std::string_view kSuffix = ".saving";
constexpr int kMostTries = 100;
constexpr int kMostLinks = 40;
constexpr unsigned long kProcessFiles = 0x9fa0;

std::string ReasonOf(int error)
{
    return std::generic_category().message(error);
}

fs::path FolderOf(const std::string& path)
{
    const fs::path folder = fs::path(path).parent_path();
    return folder.empty() ? "." : folder;
}

/// What stands where a file is to be written.
struct Place {
    std::string path;  ///< with links followed
    bool exists = false;
    bool isDevice = false;
    struct stat status {};
};

/// The links of a process to what it has open lead to no name.
bool IsOpenFile(const fs::path& link)
{
    struct statfs system {};
    return statfs(FolderOf(link.string()).c_str(), &system) == 0 &&
           static_cast<unsigned long>(system.f_type) == kProcessFiles;
}

/// Goes from link to link. \return false at one that leads to an open file of a process
bool FollowLinks(const std::string& target, std::string& path)
{
    for (int links = 0; links < kMostLinks; ++links) {
        std::error_code error;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            return true;  // no link
        if (IsOpenFile(path))
            return false;
        path = (fs::path(path).parent_path() / next).string();
    }
    throw FileError(target, ReasonOf(ELOOP));
}

Place Look(const std::string& target, Kind kind)
{
    Place place;
    place.path = target;
    if (target.empty())
        throw FileError("\"\"", "its name is empty");
    place.isDevice = target == kStandardOutput || !FollowLinks(target, place.path);
    if (place.isDevice)
        place.path = target;
    place.exists = stat(place.path.c_str(), &place.status) == 0;
    if (!place.exists && errno != ENOENT && !place.isDevice)
        throw FileError(target, ReasonOf(errno));
    if (place.exists && S_ISDIR(place.status.st_mode))
        throw FileError(target, "it is a folder");
    place.isDevice = place.isDevice || (place.exists && !S_ISREG(place.status.st_mode));
    if (place.isDevice && kind != Kind::Any)
        throw FileError(target, "it is no regular file");
    if (place.exists && target != kStandardOutput && faccessat(AT_FDCWD, place.path.c_str(), W_OK, AT_EACCESS) != 0)
        throw FileError(target, ReasonOf(errno));
    return place;
}

/// What is wrong with a folder that takes no new file.
std::string ReasonOfFolder(const fs::path& folder, int error)
{
    std::error_code ignored;
    if (!fs::is_directory(folder, ignored))
        return "there is no folder " + folder.string();
    return "nothing can be written to the folder " + folder.string() + ": " + ReasonOf(error);
}

/// Takes away what killed processes left: versions that nobody holds the lock of.
void CleanUp(const fs::path& folder)
{
    // The library's own walk through a folder ends the process where memory is short.
    const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(folder.c_str()), closedir);
    for (const dirent* entry = nullptr; open && (entry = readdir(open.get()));) {
        const std::string_view name = entry->d_name;
        if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix))
            continue;
        const std::string path = (folder / name).string();
        if (FileLock::Try(path, FileLock::Open::Existing))
            unlink(path.c_str());
    }
}

std::string RandomName()
{
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, std::random_device()(), 16);
    return std::string(kPrefix) + std::string(digits, end.ptr) + std::string(kSuffix);
}

/// Where the system or the file system doesn't let a file have such rights, it goes without.
bool IsForbidden(int error)
{
    return error == EPERM || error == EOPNOTSUPP || error == ENOSYS;
}

}  // namespace

ReplacementFile::ReplacementFile(const std::string& target, Kind kind) : target_(target)
{
    const Place place = Look(target, kind);
    place_ = place.path;
    if (place.isDevice) {
        OpenDevice();
        return;
    }
    replacesFile_ = place.exists;
    mode_ = place.status.st_mode & 07777u;
    owner_ = place.status.st_uid;
    group_ = place.status.st_gid;
    openToAll_ = kind == Kind::OpenToAll;
    MakeBeside();
}

void ReplacementFile::OpenDevice()
{
    path_ = place_;
    do {
        device_ = target_ == kStandardOutput ? fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)
                                             : open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    } while (device_ < 0 && errno == EINTR);
    if (device_ < 0)
        FailWith(errno);
}

void ReplacementFile::MakeBeside()
{
    const fs::path folder = FolderOf(place_);
    CleanUp(folder);
    // Nobody reads in the new version what the old one kept from them.
    const unsigned mode = replacesFile_ ? 0600 : openToAll_ ? 0644 : 0666;
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        path_ = (folder / RandomName()).string();
        std::error_code error;
        unfinished_.emplace(fs::absolute(path_, error).string());
        file_ = FileLock::Try(path_, FileLock::Open::New, mode);
        if (file_)
            return;
        if (errno != EEXIST && errno != EWOULDBLOCK)
            break;
    }
    const int error = errno;
    unfinished_.reset();
    if (error == EACCES || error == EROFS || error == EPERM || error == ENOENT)
        throw FileError(target_, ReasonOfFolder(folder, error));
    FailWith(error);
}

ReplacementFile::~ReplacementFile()
{
    if (device_ >= 0)
        close(device_);
    else if (!placed_)
        unlink(path_.c_str());
}

int ReplacementFile::Descriptor() const noexcept
{
    return file_ ? file_->File() : device_;
}

/// Gives the new version the owner and the permissions of the old one. The group's go where the group can't stay.
void ReplacementFile::TakeOver() const
{
    const int file = Descriptor();
    struct stat mine {};
    if (fstat(file, &mine) != 0)
        FailWith(errno);
    unsigned mode = replacesFile_ ? mode_ : 0644;
    if (replacesFile_ && (mine.st_uid != owner_ || mine.st_gid != group_) && fchown(file, owner_, group_) != 0 &&
        fchown(file, mine.st_uid, group_) != 0)
        mode &= ~06070u;
    if ((replacesFile_ || openToAll_) && fchmod(file, mode) != 0 && !IsForbidden(errno))
        FailWith(errno);
}

void ReplacementFile::PutInPlace()
{
    if (device_ >= 0) {
        if (fsync(device_) != 0 && errno != EINVAL && errno != EROFS && errno != ENOTSUP)
            FailWith(errno);
        return;
    }
    TakeOver();
    if (fsync(Descriptor()) != 0 || std::rename(path_.c_str(), place_.c_str()) != 0)
        FailWith(errno);
    placed_ = true;
    unfinished_.reset();
    // The name as well, for a machine that loses its power.
    const int folder = open(FolderOf(place_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

void ReplacementFile::FailWith(int error) const
{
    throw FileError(target_, ReasonOf(error));
}

void RequireReplaceable(const std::string& target, Kind kind)
{
    const Place place = Look(target, kind);
    const fs::path folder = FolderOf(place.path);
    if (!place.isDevice && faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        throw FileError(target, ReasonOfFolder(folder, errno));
}

}  // namespace tessara
