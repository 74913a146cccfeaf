#include "platform/com/registry/registry_error.h"
#include "platform/com/registry/registry_store.h"
#include "platform/com/registry/registry_text.h"
#include "platform/system/replacement_stream.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/auxv.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace tessara {

namespace {

constexpr char kFile[] = "/tessara/class-registry.txt";
constexpr char kSystemFolders[] = "/usr/local/share:/usr/share";
constexpr char kSystemFolder[] = "/usr/local/share";
constexpr std::size_t kLargestStore = 16 << 20;

/// A descriptor that is closed at the end.
class File {
public:
    File(const std::string& path, int flags, mode_t mode = 0) noexcept
        : descriptor_(open(path.c_str(), flags | O_CLOEXEC, mode))
    {
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File()
    {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    explicit operator bool() const noexcept { return descriptor_ >= 0; }
    int Get() const noexcept { return descriptor_; }

private:
    int descriptor_;
};

[[noreturn]] void Fail(HRESULT result, const std::string& path, const std::string& what, const std::string& reason)
{
    throw RegistryError(result, "The class registry " + path + " " + what + ": " + reason + ".");
}

[[noreturn]] void FailToRead(const std::string& path, int error)
{
    Fail(REGDB_E_READREGDB, path, "can't be read", std::generic_category().message(error));
}

[[noreturn]] void FailToWrite(const std::string& path, const std::string& reason)
{
    Fail(REGDB_E_WRITEREGDB, path, "can't be written", reason);
}

[[noreturn]] void FailToWrite(const std::string& path, int error)
{
    FailToWrite(path, std::generic_category().message(error));
}

/// A variable of the environment, empty where it isn't there or not to be trusted.
std::string_view Environment(const char* name)
{
    const char* value = secure_getenv(name);
    return value ? value : "";
}

bool HasForeignRights()
{
    return getauxval(AT_SECURE) != 0;
}

std::string HomeFolder()
{
    if (const std::string_view home = Environment("HOME"); !home.empty())
        return std::string(home);
    std::vector<char> buffer(16384);
    passwd entry = {};
    passwd* found = nullptr;
    getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found && found->pw_dir ? found->pw_dir : "";
}

/// The user's data folder, empty where there is none. A relative path counts as none.
std::string UserFolder()
{
    if (HasForeignRights())
        return {};
    if (const std::string_view data = Environment("XDG_DATA_HOME"); !data.empty() && data.front() == '/')
        return std::string(data);
    const std::string home = HomeFolder();
    return !home.empty() && home.front() == '/' ? home + "/.local/share" : std::string();
}

std::vector<std::string> SystemFolders()
{
    std::string_view list = Environment("XDG_DATA_DIRS");
    if (list.empty())
        list = kSystemFolders;
    std::vector<std::string> folders;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(':'), list.size());
        std::string_view folder = list.substr(0, end);
        while (folder.size() > 1 && folder.back() == '/')
            folder.remove_suffix(1);
        if (!folder.empty() && folder.front() == '/')
            folders.emplace_back(folder);
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return folders;
}

/// Makes a folder and those above it.
void MakeFolder(const std::filesystem::path& folder, mode_t mode, const std::string& storePath)
{
    if (mkdir(folder.c_str(), mode) == 0 || errno == EEXIST)
        return;
    if (errno != ENOENT || !folder.has_relative_path())
        FailToWrite(storePath, errno);
    MakeFolder(folder.parent_path(), mode, storePath);
    if (mkdir(folder.c_str(), mode) != 0 && errno != EEXIST)
        FailToWrite(storePath, errno);
}

std::string ReadAll(const File& file, const std::string& path)
{
    std::string text;
    char block[65536];
    for (;;) {
        const ssize_t count = read(file.Get(), block, sizeof block);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            FailToRead(path, errno);
        if (count == 0)
            return text;
        text.append(block, static_cast<std::size_t>(count));
        if (text.size() > kLargestStore)
            Fail(REGDB_E_READREGDB, path, "is damaged", std::generic_category().message(EFBIG));
    }
}

}  // namespace

std::vector<RegistryStore> RegistryStores()
{
    std::vector<RegistryStore> stores;
    if (const std::string user = UserFolder(); !user.empty())
        stores.push_back({RegistryScope::User, user + kFile});
    for (const std::string& folder : SystemFolders())
        stores.push_back({RegistryScope::System, folder + kFile});
    return stores;
}

RegistryStore WritableRegistryStore(RegistryScope scope)
{
    if (scope == RegistryScope::User) {
        const std::string user = UserFolder();
        if (user.empty())
            throw RegistryError(REGDB_E_WRITEREGDB, "The user has no home folder for a class registry.");
        return {scope, user + kFile};
    }
    // Administrators and users often have different lists: the usual folder is taken wherever it is in the list.
    const std::vector<std::string> folders = SystemFolders();
    if (folders.empty() || std::find(folders.begin(), folders.end(), kSystemFolder) != folders.end())
        return {scope, std::string(kSystemFolder) + kFile};
    return {scope, folders.front() + kFile};
}

RegistryData ReadRegistryStore(const RegistryStore& store)
{
    // Without O_NONBLOCK a pipe in the place of the file would be waited for.
    const File file(store.path, O_RDONLY | O_NONBLOCK);
    if (!file && (errno == ENOENT || errno == ENOTDIR))
        return {};
    struct stat status = {};
    if (!file || fstat(file.Get(), &status) != 0)
        FailToRead(store.path, errno);
    if (!S_ISREG(status.st_mode))
        throw RegistryError(REGDB_E_READREGDB, "The class registry " + store.path + " is not a file.");
    return ReadRegistryText(ReadAll(file, store.path), store.path);
}

bool RegistryStoreExists(const RegistryStore& store) noexcept
{
    struct stat status = {};
    return lstat(store.path.c_str(), &status) == 0;
}

RegistryWriter::RegistryWriter(RegistryStore store) : store_(std::move(store))
{
    MakeFolder(std::filesystem::path(store_.path).parent_path(), store_.scope == RegistryScope::User ? 0700 : 0755,
               store_.path);
    // For writers only: who may open the file can also hold the lock, and keep it.
    lock_ = open((store_.path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lock_ < 0)
        FailToWrite(store_.path, errno);
    while (flock(lock_, LOCK_EX) != 0) {
        if (const int error = errno; error != EINTR) {
            close(lock_);
            FailToWrite(store_.path, error);
        }
    }
}

RegistryWriter::~RegistryWriter()
{
    close(lock_);
}

void RegistryWriter::Replace(const RegistryData& data)
{
    try {
        ReplacementStream file(store_.path, ReplacementFile::Kind::OpenToAll);
        file.Stream() << WriteRegistryText(data);
        file.PutInPlace();
    } catch (const FileError& error) {
        FailToWrite(store_.path, error.Reason());
    }
}

}  // namespace tessara
