#include "platform/com/bstr.h"

#include <new>

namespace tessara {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsLead(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsTrail(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

void AppendUtf8(std::string& out, char32_t c)
{
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    const auto tail = [&put, c](int shift) { put(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | c >> 6);
        tail(0);
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12);
        tail(6);
        tail(0);
    } else {
        put(0xF0 | c >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

/// Takes one character off the front of UTF-8 text.
char32_t TakeUtf8(std::string_view& text)
{
    const auto first = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (first < 0x80)
        return first;
    const int more = first >= 0xF0 && first < 0xF5   ? 3
                     : first >= 0xE0 && first < 0xF0 ? 2
                     : first >= 0xC2 && first < 0xE0 ? 1
                                                     : 0;
    if (more == 0 || text.size() < static_cast<std::size_t>(more))
        return kReplacement;
    char32_t c = first & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) {
        const auto next = static_cast<unsigned char>(text[static_cast<std::size_t>(i)]);
        if ((next & 0xC0) != 0x80)
            return kReplacement;
        c = c << 6 | (next & 0x3F);
    }
    constexpr char32_t kLowest[] = {0, 0x80, 0x800, 0x10000};
    if (c < kLowest[more] || c > 0x10FFFF || IsLead(c) || IsTrail(c))
        return kReplacement;
    text.remove_prefix(static_cast<std::size_t>(more));
    return c;
}

}  // namespace

std::string NarrowText(BSTR text)
{
    std::string out;
    const UINT length = SysStringLen(text);
    out.reserve(length);
    for (UINT i = 0; i < length; ++i) {
        char32_t c = text[i];
        if (IsLead(c) && i + 1 < length && IsTrail(text[i + 1]))
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
        AppendUtf8(out, IsLead(c) || IsTrail(c) ? kReplacement : c);
    }
    return out;
}

std::basic_string<OLECHAR> WideText(std::string_view text)
{
    std::basic_string<OLECHAR> out;
    out.reserve(text.size());
    while (!text.empty()) {
        const char32_t c = TakeUtf8(text);
        if (c < 0x10000) {
            out.push_back(static_cast<OLECHAR>(c));
        } else {
            out.push_back(static_cast<OLECHAR>(0xD800 + ((c - 0x10000) >> 10)));
            out.push_back(static_cast<OLECHAR>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
    }
    return out;
}

BSTR MakeBstr(std::string_view text)
{
    const std::basic_string<OLECHAR> wide = WideText(text);
    BSTR result = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (!result)
        throw std::bad_alloc();
    return result;
}

}  // namespace tessara
