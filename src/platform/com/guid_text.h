#pragma once

#include "platform/com/types.h"

#include <optional>
#include <string>
#include <string_view>

namespace tessara {

/// The usual text of an identifier: "{C10E608B-ED92-4A87-941F-011785494F43}".
TESSARA_EXPORT std::string GuidText(REFGUID id);

/// Reads the same text, with hexadecimal digits of either case. \return nothing for any other text
TESSARA_EXPORT std::optional<GUID> ParseGuid(std::string_view text) noexcept;

}  // namespace tessara
