#include "app/output/temporary_file.h"

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace tessara {

namespace fs = std::filesystem;

namespace {

std::string PlaceBeside(const std::string& target)
{
    static std::atomic<unsigned> next{0};
    return target + ".part" + std::to_string(getpid()) + "-" + std::to_string(next++);
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& target) : target_(target), path_(PlaceBeside(target)) {}

TemporaryFile::~TemporaryFile()
{
    std::error_code ignored;
    if (!path_.empty())
        fs::remove(path_, ignored);
}

void TemporaryFile::Commit()
{
    std::error_code error;
    fs::rename(path_, target_, error);
    if (error)
        throw std::runtime_error("The file " + target_ + " can't be written: " + error.message() + ".");
    path_.clear();
}

void RequireWritable(const std::string& target, const std::string& source)
{
    std::error_code error;
    const auto refuse = [&](const std::string& why) {
        throw std::runtime_error("The file " + target + " can't be written: " + why + ".");
    };
    const fs::path folder = fs::absolute(target, error).parent_path();
    if (!fs::is_directory(folder, error))
        refuse("there is no folder " + folder.string());
    if (fs::is_directory(target, error))
        refuse("it is a folder");
    if (access(folder.c_str(), W_OK) != 0)
        refuse("the folder " + folder.string() + " is not writable");
    if (!source.empty() && fs::equivalent(source, target, error))
        refuse("it is the elevation file itself");
}

}  // namespace tessara
