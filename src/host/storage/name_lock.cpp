#include "host/storage/name_lock.h"

#include "host/storage/storage_error.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace tessara {

namespace {

constexpr auto kLongestWait = std::chrono::seconds(60);
constexpr auto kPause = std::chrono::milliseconds(10);

std::string LockOf(const std::string& target)
{
    const std::filesystem::path path(target);
    return (path.parent_path() / (".tessara-" + path.filename().string() + ".locked")).string();
}

/// Tells a lock that somebody holds, or that appears or goes at this moment, from one that can't be.
bool MayComeFree(int error)
{
    return error == EWOULDBLOCK || error == EEXIST || error == ENOENT;
}

}  // namespace

NameLock::NameLock(const std::string& target) : path_(LockOf(target))
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(path_).parent_path();
    const bool isOther = std::filesystem::exists(target, error) && !std::filesystem::is_regular_file(target, error);
    if (isOther || !std::filesystem::is_directory(folder.empty() ? "." : folder, error))
        return;
    const auto end = std::chrono::steady_clock::now() + kLongestWait;
    for (;;) {
        lock_ = FileLock::Try(path_, FileLock::Open::New);
        if (!lock_ && errno == EEXIST)
            lock_ = FileLock::Try(path_, FileLock::Open::Existing);
        if (lock_ || !MayComeFree(errno))
            return;
        if (std::chrono::steady_clock::now() > end)
            throw StorageError("Another program has been writing \"" + target + "\" for a minute; try again later");
        std::this_thread::sleep_for(kPause);
    }
}

/// The file goes while it is locked, so that whoever waits for it finds it gone and makes another.
NameLock::~NameLock()
{
    std::error_code error;
    if (lock_)
        std::filesystem::remove(path_, error);
}

}  // namespace tessara
