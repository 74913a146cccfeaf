#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace tessara {

/// A number that a text holds from its first to its last character, with a decimal point in every locale.
template <class Number>
std::optional<Number> WholeText(std::string_view text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

/// What somebody has typed where a number is wanted.
struct TypedNumber {
    std::optional<double> value;
    std::string reason;  ///< why there is no value, as one sentence
};

/// Spaces around the number don't count. \param low,high the least and the greatest that are taken
TypedNumber ReadTyped(std::string_view text, double low, double high);

}  // namespace tessara
