#include "app/options/text_checks.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>

namespace tessara {

namespace {

constexpr std::size_t kLongestName = 255;

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

}  // namespace

CLI::Validator NotEmpty()
{
    return CLI::Validator(
        [](const std::string& text) { return text.empty() ? std::string("expects a name, not an empty text") : ""; },
        "");
}

CLI::Validator OneOf(std::vector<std::string> words)
{
    return CLI::Validator(
        [words = std::move(words)](const std::string& text) {
            if (std::find(words.begin(), words.end(), text) != words.end())
                return std::string();
            std::string list;
            for (std::size_t i = 0; i < words.size(); ++i)
                list += words[i] + (i + 2 < words.size() ? ", " : i + 1 < words.size() ? " or " : "");
            return "expects " + list + ", not " + text;
        },
        "");
}

CLI::Validator NameText()
{
    return CLI::Validator(
        [](const std::string& text) {
            if (text.empty())
                return std::string("expects a name, not an empty text");
            if (text.size() > kLongestName)
                return std::string("expects a name of up to 255 bytes");
            return std::any_of(text.begin(), text.end(), IsControl)
                       ? std::string("expects a name without control characters")
                       : std::string();
        },
        "");
}

}  // namespace tessara
