#pragma once

#include "idl/model.h"

namespace tessara::idl {

/// Writes a library as a type library of the system's form, for its 64-bit loader. \throws std::runtime_error
void WriteTypeLibrary(const Library& library, const std::string& path);

}  // namespace tessara::idl
