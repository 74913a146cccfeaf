#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessara {

/// Writes a picture as a PNG file, in full or not at all, or to a device.
/// \param pixels red, green and blue, one byte each, without padding, the top row first
/// \throws std::runtime_error with one sentence that names the file
void WritePng(const std::string& path, int width, int height, const std::vector<std::uint8_t>& pixels);

}  // namespace tessara
