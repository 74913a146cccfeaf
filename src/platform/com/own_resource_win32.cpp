#include "platform/com/own_resource_win32.h"

#include "platform/system/wide_text_win32.h"

namespace tessara {

std::string_view OwnResource(const void* address, const char* type, unsigned short number) noexcept
{
    HMODULE module = ModuleOf(address);
    HRSRC resource = FindResourceA(module, MAKEINTRESOURCEA(number), type);
    HGLOBAL loaded = resource ? LoadResource(module, resource) : nullptr;
    if (!loaded)
        return {};
    return {static_cast<const char*>(LockResource(loaded)), SizeofResource(module, resource)};
}

}  // namespace tessara
