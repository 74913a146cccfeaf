#pragma once

#include "platform/com/types.h"

#include <string>
#include <string_view>

namespace tessara {

/// Text for a terminal: control characters, which might move its cursor or change its colours, are shown as escapes
/// such as \x1b; ends of lines stay.
TESSARA_EXPORT std::string TerminalText(std::string_view text);

}  // namespace tessara
