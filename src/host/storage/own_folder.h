#pragma once

#include <filesystem>

namespace tessara {

/// Folder of the library or program that this code is part of, without links on the way. Empty where the system doesn't
/// tell.
std::filesystem::path OwnFolder();

}  // namespace tessara
