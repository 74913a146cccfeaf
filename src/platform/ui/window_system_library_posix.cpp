#include "platform/system/debug_output.h"
#include "platform/ui/window_system.h"
#include "platform/ui/window_system_library.h"

#include <dlfcn.h>

#include <string>

namespace tessara {

namespace {

constexpr char kLibrary[] = "libtessara-ui-wx.so";

/// The folder of the library that holds this function, with its slash; empty where the loader finds libraries itself.
std::string OwnFolder()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&StartWindowSystemLibrary), &info) || !info.dli_fname)
        return {};
    const std::string path = info.dli_fname;
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

WindowSystem* Start()
{
    void* library = dlopen((OwnFolder() + kLibrary).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        OutputDebugStringA((std::string("No windows: ") + dlerror() + " \n").c_str());
        return nullptr;
    }
    const auto entry = reinterpret_cast<WindowSystemEntry>(dlsym(library, kWindowSystemEntry));
    if (!entry) {
        OutputDebugStringA((std::string("No windows: ") + kLibrary + " belongs to another version \n").c_str());
        dlclose(library);
        return nullptr;
    }
    return entry();
}

}  // namespace

WindowSystem* StartWindowSystemLibrary() noexcept
{
    try {
        return Start();
    } catch (...) {
        return nullptr;
    }
}

}  // namespace tessara
