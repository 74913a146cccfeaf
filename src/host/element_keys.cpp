#include "host/element_keys.h"

#include <atomic>
#include <charconv>
#include <cstdint>
#include <random>

namespace tessara {

namespace {

std::string RandomDigits()
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::random_device random;
    std::string digits;
    for (int word = 0; word < 4; ++word) {
        std::uint32_t bits = random();
        for (int i = 0; i < 8; ++i, bits >>= 4)
            digits += kDigits[bits & 15];
    }
    return digits;
}

}  // namespace

std::string NewElementKey()
{
    static const std::string process = RandomDigits();
    static std::atomic<std::uint64_t> next{1};
    char number[16];
    const auto end = std::to_chars(number, number + sizeof number, next++, 16);
    return process + '-' + std::string(number, end.ptr);
}

}  // namespace tessara
