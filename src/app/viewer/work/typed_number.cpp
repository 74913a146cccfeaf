#include "app/viewer/work/typed_number.h"

#include "platform/system/number_text.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view kSpaces = " \t";
    const std::size_t first = text.find_first_not_of(kSpaces);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kSpaces) + 1 - first);
}

std::optional<double> FiniteNumber(std::string_view text)
{
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    const auto number = WholeText<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

}  // namespace

TypedNumber ReadTyped(std::string_view text, double low, double high)
{
    const std::string_view typed = Trimmed(text);
    if (typed.empty())
        return {std::nullopt, "A number is wanted here."};
    const auto number = FiniteNumber(typed);
    if (number && *number >= low && *number <= high)
        return {number, {}};
    if (number)
        return {std::nullopt, "Only " + FixedText(low, 0) + " to " + FixedText(high, 0) + " will do."};
    std::string pointed(typed);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    const std::string quoted = "\u201C" + std::string(typed) + "\u201D is no number";
    return {std::nullopt, FiniteNumber(pointed) ? quoted + "; write " + pointed + "." : quoted + "."};
}

}  // namespace tessara
