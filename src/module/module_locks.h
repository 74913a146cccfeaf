#pragma once

#include <cstdint>

/// The module's lock count: the module can go while it is 0. Safe to use from several threads.
class ModuleLocks {
public:
    static void Take() noexcept;
    static void GiveBack() noexcept;
    static std::int32_t Count() noexcept;

    /// Holds one lock for its own life.
    class Hold {
    public:
        Hold() noexcept { Take(); }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        ~Hold() { GiveBack(); }
    };
};
