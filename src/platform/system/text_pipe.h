#pragma once

#include "platform/com/types.h"

#include <functional>
#include <string>
#include <string_view>

namespace tessara {

/// Lets a function that takes the name of a file write to another function, without a file between them.
/// \param write opens the name, writes and closes it again, once \param read gets the bytes, on another thread
/// \throws std::system_error where the system has no pipe for them, and what one of the two throws
TESSARA_EXPORT void PipeText(const std::function<void(const std::string& path)>& write,
                             const std::function<void(std::string_view)>& read);

}  // namespace tessara
