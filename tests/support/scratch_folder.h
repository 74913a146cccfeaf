#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace tessara::test {

/// An empty folder of its own, for as long as it lives.
class ScratchFolder {
public:
    ScratchFolder()
        : path_(std::filesystem::temp_directory_path() / ("tessara-test-" + std::to_string(std::random_device()())))
    {
        std::filesystem::create_directories(path_);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() { std::filesystem::remove_all(path_); }

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    std::vector<std::string> Files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path path_;
};

}  // namespace tessara::test
