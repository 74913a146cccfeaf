#include "host/elevation/file_replacement.h"

#include "host/elevation/elevation_error.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

namespace tessara {
namespace {

namespace fs = std::filesystem;

/// A new file beside another one, removed again unless it takes the other's place. Operations tell by errno why they
/// fail.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool IsOpen() const { return file_ != nullptr; }
    bool Write(const void* bytes, std::size_t size);
    std::error_code MoveTo(const fs::path& target);

private:
    fs::path path_;
    std::FILE* file_ = nullptr;
    bool exists_ = false;
};

TemporaryFile::TemporaryFile(const fs::path& target)
{
    constexpr int kTries = 16;
    std::random_device chance;
    for (int i = 0; i < kTries && file_ == nullptr; ++i) {
        path_ = target;
        path_ += "." + std::to_string(chance()) + ".part";
        errno = 0;
        file_ = std::fopen(path_.string().c_str(), "wbx");
        if (file_ == nullptr && errno != EEXIST)
            return;
    }
    exists_ = file_ != nullptr;
}

TemporaryFile::~TemporaryFile()
{
    if (file_ != nullptr)
        std::fclose(file_);
    std::error_code ignored;
    if (exists_)
        fs::remove(path_, ignored);
}

bool TemporaryFile::Write(const void* bytes, std::size_t size)
{
    errno = 0;
    const bool written = std::fwrite(bytes, 1, size, file_) == size;
    const int reason = errno;
    // What is still in the buffer meets a full disk only now.
    const bool closed = std::fclose(std::exchange(file_, nullptr)) == 0;
    if (!written)
        errno = reason;
    return written && closed;
}

std::error_code TemporaryFile::MoveTo(const fs::path& target)
{
    std::error_code error;
    fs::rename(path_, target, error);
    exists_ = static_cast<bool>(error);
    return error;
}

}  // namespace

void ReplaceFile(const std::string& path, const void* bytes, std::size_t size)
{
    const auto fail = [&](const std::string& reason) {
        throw ElevationError("The file " + path + " can't be written: " + reason + ".");
    };
    std::error_code error;
    fs::path target = path;
    if (fs::is_symlink(target, error))
        target = fs::weakly_canonical(target, error);
    if (fs::is_directory(target, error))
        fail("it is a folder");
    if (fs::exists(target, error) && !fs::is_regular_file(target, error))
        fail("it is not a regular file");
    TemporaryFile file(target);
    if (!file.IsOpen() || !file.Write(bytes, size))
        fail(std::generic_category().message(errno));
    if (const std::error_code reason = file.MoveTo(target))
        fail(reason.message());
}

}  // namespace tessara
