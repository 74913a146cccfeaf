#include "host/module_path.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace tessara {

namespace {

namespace fs = std::filesystem;

constexpr char kModuleName[] = "Tessara.so";

fs::path LibraryFolder()
{
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&FindModulePath), &info) == 0 || !info.dli_fname)
        return {};
    std::error_code ignored;
    return fs::weakly_canonical(info.dli_fname, ignored).parent_path();
}

fs::path ProgramFolder()
{
    std::error_code ignored;
    return fs::read_symlink("/proc/self/exe", ignored).parent_path();
}

}  // namespace

std::string FindModulePath()
{
    const fs::path folders[] = {LibraryFolder(), ProgramFolder()};
    for (const fs::path& folder : folders) {
        std::error_code ignored;
        if (!folder.empty() && fs::exists(folder / kModuleName, ignored))
            return (folder / kModuleName).string();
    }
    throw std::runtime_error("The terrain component " + std::string(kModuleName) + " is neither in " +
                             folders[0].string() + " nor in " + folders[1].string() + ".");
}

}  // namespace tessara
