#include "platform/system/wide_text_win32.h"

namespace tessara {

namespace {

constexpr std::size_t kLongestPath = 32768;  // of the system, in characters

}  // namespace

std::string ToNarrow(std::wstring_view text)
{
    const auto length = static_cast<int>(text.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), bytes, nullptr, nullptr);
    return narrow;
}

std::wstring ModuleFileName(HMODULE module)
{
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

HMODULE ModuleOf(const void* address) noexcept
{
    HMODULE module = nullptr;
    constexpr DWORD kFlags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return GetModuleHandleExW(kFlags, static_cast<const wchar_t*>(address), &module) ? module : nullptr;
}

}  // namespace tessara
