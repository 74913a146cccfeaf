#include "idl/tokens.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace tessara::idl {

namespace {

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Length of the comment or preprocessor line at the front, else 0.
std::size_t SkippedLength(std::string_view text)
{
    if (text.starts_with("//") || text.front() == '#')
        return std::min(text.find('\n'), text.size());
    if (text.starts_with("/*")) {
        const std::size_t end = text.find("*/", 2);
        return end == std::string_view::npos ? text.size() : end + 2;
    }
    return 0;
}

std::size_t WordLength(std::string_view text)
{
    std::size_t length = 1;
    if (text.front() == '"') {
        const std::size_t end = text.find('"', 1);
        return end == std::string_view::npos ? text.size() : end + 1;
    }
    if (!IsLetter(text.front()) && !IsDigit(text.front()))
        return text.starts_with("::") ? 2 : 1;
    // An identifier of 128 bits may begin with a letter as well.
    const auto isIdPart = [](char c) { return IsLetter(c) || IsDigit(c) || c == '-'; };
    const auto idEnd = std::find_if_not(text.begin(), text.end(), isIdPart);
    if (idEnd - text.begin() == 36 && text[8] == '-' && text[13] == '-')
        return 36;
    while (length < text.size() && (IsLetter(text[length]) || IsDigit(text[length]) ||
                                    (IsDigit(text.front()) && (text[length] == '.' || text[length] == '\''))))
        ++length;
    return length;
}

}  // namespace

Tokens::Tokens(std::string_view source, std::string file) : file_(std::move(file))
{
    int line = 1;
    while (!source.empty()) {
        std::size_t length = SkippedLength(source);
        if (length == 0 && !IsBlank(source.front())) {
            length = WordLength(source);
            words_.push_back({std::string(source.substr(0, length)), line});
        }
        length = std::max<std::size_t>(length, 1);
        line +=
            static_cast<int>(std::count(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(length), '\n'));
        source.remove_prefix(length);
    }
}

std::string_view Tokens::Peek(std::size_t ahead) const noexcept
{
    return next_ + ahead < words_.size() ? std::string_view(words_[next_ + ahead].text) : std::string_view();
}

std::string Tokens::Take()
{
    if (AtEnd())
        Refuse("ends too early");
    return words_[next_++].text;
}

bool Tokens::TakeIf(std::string_view word)
{
    if (AtEnd() || Peek() != word)
        return false;
    ++next_;
    return true;
}

void Tokens::Expect(std::string_view word)
{
    if (!TakeIf(word))
        Refuse("has '" + std::string(Peek()) + "' where '" + std::string(word) + "' is expected");
}

std::string Tokens::TakeString()
{
    const std::string_view word = Peek();
    if (word.size() < 2 || word.front() != '"' || word.back() != '"')
        Refuse("has '" + std::string(word) + "' where a string is expected");
    const std::string taken = Take();
    return taken.substr(1, taken.size() - 2);
}

void Tokens::Refuse(const std::string& why) const
{
    const int line = words_.empty() ? 1 : words_[std::min(next_, words_.size() - 1)].line;
    throw SourceError(file_ + ":" + std::to_string(line) + ": " + why);
}

std::string ReadSource(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (!stream)
        throw SourceError(file + " can't be read");
    return text;
}

}  // namespace tessara::idl
