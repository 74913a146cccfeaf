#include "host/project/autosave.h"

#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "host/storage/sqlite_file.h"
#include "host/storage/user_folders.h"
#include "platform/system/file_lock.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

namespace tessara {

namespace {

namespace fs = std::filesystem;

constexpr const char* kProjectSetting = "autosave.project";
constexpr const char* kProjectSuffix = ".tessara";
constexpr const char* kLockSuffix = ".lock";
constexpr int kMostTries = 100;

std::string LockOf(const std::string& project)
{
    return fs::path(project).replace_extension(kLockSuffix).string();
}

void Remove(const std::string& path) noexcept
{
    std::error_code error;
    fs::remove(path, error);
}

/// A name in the folder that no other program has. \throws StorageError
std::pair<std::string, std::unique_ptr<FileLock>> NewPlace(const std::string& folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw StorageError("Can't make the folder \"" + folder + "\": " + error.message());
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        char digits[8];
        const auto end = std::to_chars(digits, digits + sizeof digits, std::random_device()(), 16);
        const std::string path = (fs::path(folder) / std::string(digits, end.ptr)).string() + kProjectSuffix;
        if (auto lock = FileLock::Try(LockOf(path), FileLock::Open::New))
            return {path, std::make_unique<FileLock>(std::move(*lock))};
        if (errno != EEXIST && errno != EWOULDBLOCK)
            break;
    }
    throw StorageError("Can't write to the folder \"" + folder + "\": " + std::generic_category().message(errno));
}

}  // namespace

std::string AutosaveFolder()
{
    return (UserStateFolder() / "tessara" / "autosave").string();
}

Recovery::Recovery(std::unique_ptr<FileLock> lock, std::string path) : lock_(std::move(lock)), path_(std::move(path))
{
    projectPath_ = TextOf(ProjectFile(path_).Settings(), kProjectSetting);
    time_ = std::chrono::time_point_cast<std::chrono::system_clock::duration>(
        std::chrono::file_clock::to_sys(fs::last_write_time(path_)));
}

Recovery::Recovery(Recovery&& other) noexcept = default;
Recovery& Recovery::operator=(Recovery&& other) noexcept = default;
Recovery::~Recovery() = default;

void Recovery::Discard()
{
    Remove(path_);
    Remove(LockOf(path_));
}

std::vector<Recovery> FindRecoveries(const std::string& folder)
{
    std::vector<Recovery> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string path = entry->path().string();
        if (entry->path().extension() != kLockSuffix)
            continue;
        auto lock = FileLock::Try(path, FileLock::Open::Existing);
        if (!lock)
            continue;
        const std::string project = fs::path(path).replace_extension(kProjectSuffix).string();
        std::error_code missing;
        if (!fs::exists(project, missing)) {
            Remove(path);  // of a program that had nothing to keep
            continue;
        }
        try {
            found.push_back(Recovery(std::make_unique<FileLock>(std::move(*lock)), project));
        } catch (const std::exception&) {
            // Damaged, or of a newer version of the program: not for us to offer, nor to throw away.
        }
    }
    std::sort(found.begin(), found.end(), [](const Recovery& a, const Recovery& b) { return a.Time() > b.Time(); });
    return found;
}

Autosave::Autosave(const std::string& folder) : Autosave(NewPlace(folder)) {}

Autosave::Autosave(std::pair<std::string, std::unique_ptr<FileLock>> place)
    : lockPath_(LockOf(place.first)), path_(std::move(place.first)), lock_(std::move(place.second))
{
}

Autosave::Autosave(Recovery&& recovery) : Autosave(std::pair(std::move(recovery.path_), std::move(recovery.lock_))) {}

Autosave::~Autosave()
{
    Forget();
    Remove(lockPath_);
}

void Autosave::Keep(const std::string& projectPath, const std::function<void(ProjectWriter&)>& write)
{
    ProjectWriter writer(path_, IsProjectFile(projectPath) ? projectPath : std::string());
    write(writer);
    writer.Set(kProjectSetting, projectPath);
    writer.Commit();
}

void Autosave::Forget() noexcept
{
    Remove(path_);
}

}  // namespace tessara
