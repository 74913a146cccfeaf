#include "app/options/number_list.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace tessara {

std::vector<double> ParseNumbers(const std::string& text, char separator, std::size_t count)
{
    std::vector<double> numbers;
    const char* at = text.data();
    const char* end = at + text.size();
    while (numbers.size() < count) {
        double number = 0.0;
        const auto parsed = std::from_chars(at, end, number);
        if (parsed.ec != std::errc() || !std::isfinite(number))
            return {};
        numbers.push_back(number);
        at = parsed.ptr;
        if (numbers.size() < count) {
            if (at == end || *at != separator)
                return {};
            ++at;
        }
    }
    return at == end ? numbers : std::vector<double>();
}

}  // namespace tessara
