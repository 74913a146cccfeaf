#include "platform/com/guid_text.h"

#include <charconv>

namespace tessara {

namespace {

constexpr std::string_view kPattern = "{00000000-0000-0000-0000-000000000000}";

void AppendHex(std::string& out, std::uint32_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        out.push_back("0123456789ABCDEF"[value >> shift & 0xF]);
}

std::uint32_t Hex(std::string_view text, std::size_t first, std::size_t digits)
{
    std::uint32_t value = 0;
    std::from_chars(text.data() + first, text.data() + first + digits, value, 16);
    return value;
}

bool IsHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool Fits(std::string_view text)
{
    if (text.size() != kPattern.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kPattern[i] == '0' ? !IsHexDigit(text[i]) : text[i] != kPattern[i])
            return false;
    }
    return true;
}

}  // namespace

std::string GuidText(REFGUID id)
{
    std::string text = "{";
    AppendHex(text, id.Data1, 8);
    text += '-';
    AppendHex(text, id.Data2, 4);
    text += '-';
    AppendHex(text, id.Data3, 4);
    for (int i = 0; i < 8; ++i) {
        if (i == 0 || i == 2)
            text += '-';
        AppendHex(text, id.Data4[i], 2);
    }
    return text + '}';
}

std::optional<GUID> ParseGuid(std::string_view text) noexcept
{
    if (!Fits(text))
        return std::nullopt;
    GUID id = {Hex(text, 1, 8),
               static_cast<std::uint16_t>(Hex(text, 10, 4)),
               static_cast<std::uint16_t>(Hex(text, 15, 4)),
               {}};
    for (std::size_t i = 0; i < 8; ++i)
        id.Data4[i] = static_cast<std::uint8_t>(Hex(text, (i < 2 ? 20 : 21) + 2 * i, 2));
    return id;
}

}  // namespace tessara
