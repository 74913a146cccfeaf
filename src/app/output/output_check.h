#pragma once

#include <string>

namespace tessara {

/// Checks, before long work, that a file can be written and isn't the one that the work reads.
/// \param source may be empty \throws FileError
void RequireWritable(const std::string& target, const std::string& source);

}  // namespace tessara
