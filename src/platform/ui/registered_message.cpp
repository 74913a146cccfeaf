#include "platform/ui/registered_message.h"

#include <map>
#include <mutex>
#include <new>
#include <string>

namespace {

constexpr UINT kFirst = 0xC000;
constexpr std::size_t kNumbers = 0x4000;

std::string InLowerCase(const char* text)
{
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

}  // namespace

UINT RegisterWindowMessage(const char* text)
{
    // Never destroyed: modules may ask while the process ends.
    static std::mutex& mutex = *new std::mutex;
    static auto& numbers = *new std::map<std::string, UINT>;
    if (!text || !*text)
        return 0;
    try {
        const std::string lower = InLowerCase(text);
        const std::lock_guard lock(mutex);
        if (const auto known = numbers.find(lower); known != numbers.end())
            return known->second;
        if (numbers.size() == kNumbers)
            return 0;
        return numbers.emplace(lower, kFirst + static_cast<UINT>(numbers.size())).first->second;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}
