#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tessara::test {

/// An empty folder in which this process, and those that it starts, keep their registrations, so that a test sees and
/// changes nobody else's. It goes with everything in it.
class RegistrySandbox {
public:
    RegistrySandbox()
    {
        std::string name = (std::filesystem::temp_directory_path() / "tessara-registry-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::filesystem::filesystem_error("no folder", std::make_error_code(std::errc::io_error));
        folder_ = std::filesystem::canonical(name);
        Set("XDG_DATA_HOME", Path("user"));
        Set("XDG_DATA_DIRS", Path("machine"));
    }
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;
    ~RegistrySandbox()
    {
        for (const auto& [name, value] : before_)
            value ? setenv(name, value->c_str(), 1) : unsetenv(name);
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    /// Sets a variable of the environment until the end.
    void Set(const char* name, const std::string& value)
    {
        const char* before = std::getenv(name);
        before_.insert(before_.begin(), {name, before ? std::optional<std::string>(before) : std::nullopt});
        setenv(name, value.c_str(), 1);
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::string UserStore() const { return Path("user/tessara/class-registry.txt"); }
    std::string MachineStore() const { return Path("machine/tessara/class-registry.txt"); }

    static std::string Read(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// Makes a file and its folder. \return its path
    static std::string Write(const std::string& path, const std::string& bytes)
    {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

private:
    std::filesystem::path folder_;
    std::vector<std::pair<const char*, std::optional<std::string>>> before_;
};

}  // namespace tessara::test
