#include "host/project/element_name.h"

#include "platform/com/bstr.h"

#include <algorithm>
#include <filesystem>

namespace tessara {

namespace {

constexpr std::size_t kLongest = 200;
constexpr const char* kNameless = "sample";

/// The control characters of ASCII, and those that UTF-8 writes as C2 80 to C2 9F.
std::size_t FindControl(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        if (byte < 0x20 || byte == 0x7F || (byte == 0xC2 && next >= 0x80 && next < 0xA0))
            return i;
    }
    return std::string_view::npos;
}

bool IsUtf8(const std::string& text)
{
    return BstrHolder(text).Narrow() == text;
}

}  // namespace

std::string NameProblem(std::string_view name)
{
    if (name.empty())
        return "is empty";
    if (name.size() > kLongest)
        return "is longer than " + std::to_string(kLongest) + " bytes";
    if (FindControl(name) != std::string_view::npos)
        return "has a control character";
    return IsUtf8(std::string(name)) ? "" : "is not UTF-8";
}

std::string UsableName(std::string_view name)
{
    std::string text = IsUtf8(std::string(name)) ? std::string(name) : BstrHolder(name).Narrow();
    for (std::size_t at = FindControl(text); at != std::string::npos; at = FindControl(text))
        text.replace(at, static_cast<unsigned char>(text[at]) == 0xC2 ? 2 : 1, "_");
    if (text.size() > kLongest) {
        std::size_t end = kLongest;
        while (end > 0 && (text[end] & 0xC0) == 0x80)
            --end;
        text.resize(end);
    }
    return text.empty() ? kNameless : text;
}

std::string NameFromFile(const std::string& path)
{
    return UsableName(std::filesystem::path(path).stem().string());
}

}  // namespace tessara
