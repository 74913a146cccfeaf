#include "host/module_path.h"
#include "host/storage/own_folder.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace tessara {

namespace {

namespace fs = std::filesystem;

constexpr char kModuleName[] = "Tessara.so";

fs::path ProgramFolder()
{
    std::error_code ignored;
    return fs::read_symlink("/proc/self/exe", ignored).parent_path();
}

}  // namespace

std::string FindModulePath()
{
    const fs::path folders[] = {OwnFolder(), ProgramFolder()};
    for (const fs::path& folder : folders) {
        std::error_code ignored;
        if (!folder.empty() && fs::exists(folder / kModuleName, ignored))
            return (folder / kModuleName).string();
    }
    throw std::runtime_error("The terrain component " + std::string(kModuleName) + " is neither in " +
                             folders[0].string() + " nor in " + folders[1].string() + ".");
}

}  // namespace tessara
