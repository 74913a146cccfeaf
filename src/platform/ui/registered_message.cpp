#include "platform/ui/registered_message.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr UINT kFirst = 0xC000;
constexpr UINT kLast = 0xFFFF;

std::string Lowered(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

}  // namespace

UINT RegisterWindowMessage(const char* text)
{
    static std::mutex mutex;
    static std::vector<std::string> texts;
    if (!text || !*text)
        return 0;
    try {
        const std::string wanted = Lowered(text);
        const std::lock_guard lock(mutex);
        const auto found = std::find(texts.begin(), texts.end(), wanted);
        const auto number = kFirst + static_cast<UINT>(found - texts.begin());
        if (number > kLast)
            return 0;
        if (found == texts.end())
            texts.push_back(wanted);
        return number;
    } catch (...) {
        return 0;
    }
}
