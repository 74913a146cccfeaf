#pragma once

#include "../platform/com/com.h"

#include <vector>

namespace tessara {

/// The host's classes in the process's class table, until the end of its life: CLSID_ElevationMatrix and
/// CLSID_GLContext. The module behind CLSID_ImageFile, which lies beside this library and loads with the first reader,
/// stays there until the process ends. On Windows there is no such module.
class HostClasses {
public:
    HostClasses(const HostClasses&) = delete;
    HostClasses& operator=(const HostClasses&) = delete;
    HostClasses(HostClasses&& other) noexcept = default;
    HostClasses& operator=(HostClasses&& other) noexcept
    {
        cookies_.swap(other.cookies_);
        return *this;
    }
    ~HostClasses();

private:
    friend HostClasses RegisterHostClasses();
    HostClasses() = default;

    /// The classes that every system has.
    static HostClasses OfHost();
    void Add(REFCLSID clsid, IUnknown* factory);

    std::vector<DWORD> cookies_;
};

/// Makes CoCreateInstance know the host's classes. \throws std::bad_alloc
[[nodiscard]] HostClasses RegisterHostClasses();

}  // namespace tessara
