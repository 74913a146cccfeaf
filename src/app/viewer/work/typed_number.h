#pragma once

#include <charconv>
#include <optional>
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

}  // namespace tessara
