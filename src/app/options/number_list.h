#pragma once

#include <string>
#include <vector>

namespace tessara {

/// Numbers with a decimal point between separators, as in "3,-4.5,2" or "800x600".
/// \return exactly `count` finite numbers, or none where the text is anything else
std::vector<double> ParseNumbers(const std::string& text, char separator, std::size_t count);

}  // namespace tessara
