#pragma once

#include "idl/model.h"

#include <string>

namespace tessara::idl {

/// The type description as JSON, in the form that docs/registration.md tells.
std::string WriteDescription(const Library& library);

/// A C++ header with the constant kTypeLibrary, a tessara::TypeLibraryId.
std::string WriteConstants(const Library& library);

}  // namespace tessara::idl
