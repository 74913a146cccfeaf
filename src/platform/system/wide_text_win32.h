#pragma once

#include "platform/com/bstr.h"

#include <string>
#include <string_view>

namespace tessara {

/// Text for the system's functions.
inline std::wstring ToWide(std::string_view utf8)
{
    return WideText(utf8);
}

/// Text of the system's as UTF-8. An unpaired surrogate becomes U+FFFD.
std::string ToNarrow(std::wstring_view text);

/// Path of a loaded module's file. \param module null for the program \return empty where the system doesn't tell
std::wstring ModuleFileName(HMODULE module);

/// The module that the code or data at an address belongs to, or null.
HMODULE ModuleOf(const void* address) noexcept;

}  // namespace tessara
