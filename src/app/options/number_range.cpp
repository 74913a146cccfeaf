#include "app/options/number_range.h"

#include "app/options/number_list.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <charconv>
#include <string>

namespace tessara {

namespace {

std::string Shortest(double value)
{
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general);
    return std::string(digits, end.ptr);
}

}  // namespace

CLI::Validator NumberBetween(double low, double high)
{
    const auto check = [low, high](const std::string& text) {
        const auto number = ParseNumbers(text, ',', 1);
        if (!number.empty() && number[0] >= low && number[0] <= high)
            return std::string();
        return "expects a number from " + Shortest(low) + " to " + Shortest(high) + ", not " + text;
    };
    return CLI::Validator(check, "");
}

}  // namespace tessara
