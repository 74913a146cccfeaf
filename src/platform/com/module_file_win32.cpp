#include "platform/com/module_file.h"
#include "platform/system/wide_text_win32.h"

namespace tessara {

std::string ModulePathOf(const void* address)
{
    HMODULE module = ModuleOf(address);
    return module ? ToNarrow(ModuleFileName(module)) : std::string();
}

}  // namespace tessara
