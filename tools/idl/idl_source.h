#pragma once

#include "idl/model.h"

#include <string>
#include <string_view>

namespace tessara::idl {

/// Reads an IDL source with one library: enumerations, interfaces and classes, with the attributes that the model has.
/// \param file its name, for the sentences of failures
/// \throws SourceError, also where the library names something that isn't declared
Library ReadIdl(std::string_view source, const std::string& file);

}  // namespace tessara::idl
