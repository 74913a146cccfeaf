#include "app/options/number_range.h"

#include "app/options/number_list.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <charconv>
#include <cmath>
#include <string>

namespace tessara {

namespace {

std::string Shortest(double value)
{
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits, value,
                                   std::abs(value) < 1e15 ? std::chars_format::fixed : std::chars_format::general);
    return std::string(digits, end.ptr);
}

CLI::Validator Between(double low, double high, const char* kind, const char* characters)
{
    const auto check = [=](const std::string& text) {
        const auto number = ParseNumbers(text, ',', 1);
        if (!number.empty() && number[0] >= low && number[0] <= high &&
            text.find_first_not_of(characters) == std::string::npos)
            return std::string();
        return std::string("expects a ") + kind + " from " + Shortest(low) + " to " + Shortest(high) + ", not " + text;
    };
    return CLI::Validator(check, "");
}

}  // namespace

CLI::Validator NumberBetween(double low, double high)
{
    return Between(low, high, "number", "+-.0123456789eE");
}

CLI::Validator WholeNumberBetween(double low, double high)
{
    return Between(low, high, "whole number", "-0123456789");
}

CLI::Validator Number()
{
    return CLI::Validator(
        [](const std::string& text) {
            return ParseNumbers(text, ',', 1).empty() ? "expects a number, not " + text : std::string();
        },
        "");
}

}  // namespace tessara
