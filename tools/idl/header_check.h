#pragma once

#include "idl/model.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessara::idl {

/// Compares a type description with the C++ header that declares the same: identifiers, the enumerations' values, and
/// of each interface every method in its place, with the name and type of every argument. \param file the header's
/// name, for the sentences \return one sentence for each difference \throws SourceError for a header that lacks an
/// interface or an enumeration or declares one in an unexpected way
std::vector<std::string> CompareWithHeader(const Library& library, std::string_view header, const std::string& file);

}  // namespace tessara::idl
