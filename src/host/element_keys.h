#pragma once

#include <string>

namespace tessara {

/// A key of hexadecimal digits and a hyphen, at most 49 characters, that no other call gives, in this process or
/// another one: 128 random bits of the process and a running number.
std::string NewElementKey();

}  // namespace tessara
