#include "host/storage/own_folder.h"

#include <dlfcn.h>

namespace tessara {

std::filesystem::path OwnFolder()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&OwnFolder), &info) || !info.dli_fname)
        return {};
    std::error_code ignored;
    return std::filesystem::weakly_canonical(info.dli_fname, ignored).parent_path();
}

}  // namespace tessara
