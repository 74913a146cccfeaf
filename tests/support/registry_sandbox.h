#pragma once

#include "support/scratch_folder.h"

#include <optional>
#include <utility>

namespace tessara::test {

/// An empty folder in which this process, and those that it starts, keep their registrations, so that a test sees and
/// changes nobody else's. It goes with everything in it.
class RegistrySandbox : public ScratchFolder {
public:
    RegistrySandbox()
    {
        Set("XDG_DATA_HOME", Path("user"));
        Set("XDG_DATA_DIRS", Path("machine"));
    }
    ~RegistrySandbox()
    {
        for (const auto& [name, value] : before_)
            value ? setenv(name, value->c_str(), 1) : unsetenv(name);
    }

    /// Sets a variable of the environment until the end.
    void Set(const char* name, const std::string& value)
    {
        const char* before = std::getenv(name);
        before_.insert(before_.begin(), {name, before ? std::optional<std::string>(before) : std::nullopt});
        setenv(name, value.c_str(), 1);
    }

    std::string UserStore() const { return Path("user/tessara/class-registry.txt"); }
    std::string MachineStore() const { return Path("machine/tessara/class-registry.txt"); }

private:
    std::vector<std::pair<const char*, std::optional<std::string>>> before_;
};

}  // namespace tessara::test
