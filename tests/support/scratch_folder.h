#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace tessara::test {

/// A folder for one test's files, removed with everything in it.
class ScratchFolder {
public:
    ScratchFolder()
    {
        std::filesystem::path name;
        do
            name = std::filesystem::temp_directory_path() / ("tessara-" + std::to_string(std::random_device()()));
        while (!std::filesystem::create_directory(name));
        path_ = std::filesystem::canonical(name);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string Path(const std::string& name) const { return (path_ / name).string(); }
    std::string operator/(const std::string& name) const { return Path(name); }

    /// Names of what the folder holds.
    std::vector<std::string> Files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        return names;
    }

    /// Makes a file of the bytes, and its folder. \return its path
    std::string Write(const std::string& name, const std::string& bytes) const
    {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return Path(name);
    }

private:
    std::filesystem::path path_;
};

inline std::string ReadBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tessara::test
