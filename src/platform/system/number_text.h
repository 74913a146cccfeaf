#pragma once

#include "platform/com/types.h"

#include <string>
#include <string_view>

namespace tessara {

/// The number that a text begins with, after white space: an optional sign, decimal digits with a point, an exponent.
/// What follows is ignored; a text without a number gives 0, one too large an infinity. The same in every locale.
TESSARA_EXPORT double LeadingNumber(std::string_view text) noexcept;

/// The whole number that a text begins with, likewise, within the range of int.
TESSARA_EXPORT int LeadingInteger(std::string_view text) noexcept;

/// A number with a decimal point and that many digits after it, in every locale. \param digits at most 17
TESSARA_EXPORT std::string FixedText(double value, int digits);

}  // namespace tessara
