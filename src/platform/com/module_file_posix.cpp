#include "platform/com/module_file.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace tessara {

std::string ModulePathOf(const void* address)
{
    Dl_info info = {};
    std::error_code error;
    if (dladdr(address, &info) == 0 || !info.dli_fname)
        return {};
    const std::filesystem::path path = std::filesystem::canonical(info.dli_fname, error);
    return error ? std::string() : path.string();
}

}  // namespace tessara
