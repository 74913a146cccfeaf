#pragma once

#include <string>

namespace tessara {

/// Path of the component's file Tessara.so, which lies beside this library or beside the program.
/// \throws std::runtime_error that names the folders, when it lies in neither
std::string FindModulePath();

}  // namespace tessara
