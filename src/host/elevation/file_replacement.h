#pragma once

#include <cstddef>
#include <string>

namespace tessara {

/// Makes a file of the given contents, or replaces one. It is written beside its place and then moved there, so that
/// nobody sees half of it; when that fails, what was there stays and nothing new does. A link stays one.
/// \throws ElevationError
void ReplaceFile(const std::string& path, const void* bytes, std::size_t size);

}  // namespace tessara
