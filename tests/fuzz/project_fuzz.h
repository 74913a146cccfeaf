#pragma once

#include <cstdint>
#include <span>

namespace tessara::test {

/// Damages a sound project as the bytes say, opens it and takes everything out of it, up to a drawn frame. Whatever
/// comes out is to be an error in words or terrains that draw; anything else ends the process.
/// \param damage the first byte chooses between the file's bytes, its length, and the values in it
/// \return whether the project opened
bool UseDamagedProject(std::span<const std::uint8_t> damage);

}  // namespace tessara::test
