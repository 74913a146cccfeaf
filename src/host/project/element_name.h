#pragma once

#include <string>
#include <string_view>

namespace tessara {

/// What is wrong with a name that somebody gives a terrain, in words that follow it; empty for a good one. A name has 1
/// to 200 bytes of UTF-8 and no control characters.
std::string NameProblem(std::string_view name);

/// The name itself, or the nearest one that a terrain can have.
std::string UsableName(std::string_view name);

/// The name that a terrain has from its file; "sample" without one.
std::string NameFromFile(const std::string& path);

}  // namespace tessara
