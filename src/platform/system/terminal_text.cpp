#include "platform/system/terminal_text.h"

namespace tessara {

namespace {

/// Length of the control character that a text begins with, 0 where there is none: those of ASCII, and those that UTF-8
/// writes as C2 80 to C2 9F.
std::size_t ControlLength(std::string_view text)
{
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0)
        return 2;
    return (byte(0) < 0x20 && byte(0) != '\n') || byte(0) == 0x7F ? 1 : 0;
}

}  // namespace

std::string TerminalText(std::string_view text)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = ControlLength(text);
        if (length == 0) {
            shown += text.front();
            text.remove_prefix(1);
            continue;
        }
        const auto code = static_cast<unsigned char>(text[length - 1]);
        shown += {'\\', 'x', kDigits[code >> 4], kDigits[code & 15]};
        text.remove_prefix(length);
    }
    return shown;
}

}  // namespace tessara
