#include "platform/system/number_text.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace tessara {

namespace {

/// Without white space in front and without a plus, which from_chars doesn't take.
std::string_view FromSign(std::string_view text) noexcept
{
    while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')))
        text.remove_prefix(1);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

/// Neither "inf" nor "nan" is a number that somebody types.
bool BeginsWithDigit(std::string_view text) noexcept
{
    if (text.starts_with('-'))
        text.remove_prefix(1);
    return !text.empty() && (text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
}

/// Whether a number that is out of range is so for its size; else it is too close to 0.
bool IsHuge(std::string_view number) noexcept
{
    const std::size_t exponent = number.find_first_of("eE");
    if (exponent != std::string_view::npos)
        return number.substr(exponent + 1, 1) != "-";
    return number.find_first_of("123456789") < number.find('.');
}

}  // namespace

double LeadingNumber(std::string_view text) noexcept
{
    text = FromSign(text);
    if (!BeginsWithDigit(text))
        return 0.0;
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    const std::string_view number = text.substr(0, static_cast<std::size_t>(result.ptr - text.data()));
    const double size = IsHuge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    return number.front() == '-' ? -size : size;
}

int LeadingInteger(std::string_view text) noexcept
{
    text = FromSign(text);
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    return text.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

std::string FixedText(double value, int digits)
{
    char text[340];  // the longest: a sign, 309 digits, a point, 17 digits
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, digits);
    return std::string(text, end.ptr);
}

}  // namespace tessara
