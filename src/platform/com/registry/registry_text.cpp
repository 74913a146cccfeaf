#include "platform/com/registry/registry_text.h"

#include "platform/com/registry/registry_error.h"

#include <array>
#include <cstdint>

namespace tessara {

namespace {

constexpr std::string_view kTitle = "Tessara class registry ";
constexpr std::string_view kVersion = "1";
constexpr std::string_view kEnd = "end ";
constexpr std::size_t kEndLine = kEnd.size() + 8 + 1;  // with eight digits and the line feed

/// The CRC-32 of ISO 3309, as text.
std::string Checksum(std::string_view text)
{
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char c : text) {
        sum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
    }
    sum = ~sum;
    std::string digits;
    for (int shift = 28; shift >= 0; shift -= 4)
        digits += "0123456789ABCDEF"[sum >> shift & 0xF];
    return digits;
}

void AppendQuoted(std::string& out, std::string_view text)
{
    out += '"';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte < 0x20 || byte == 0x7F) {
            out += "\\x";
            out += "0123456789ABCDEF"[byte >> 4];
            out += "0123456789ABCDEF"[byte & 0xF];
        } else {
            out += c;
        }
    }
    out += '"';
}

int HexDigit(char c)
{
    return c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

class Reader {
public:
    Reader(std::string_view text, const std::string& path) : rest_(text), path_(path) {}

    RegistryData Read()
    {
        ReadFrame();
        RegistryData data;
        std::string key;
        while (!rest_.empty()) {
            const std::string_view line = TakeLine();
            if (line.empty())
                continue;
            if (line.front() == '[')
                key = ReadKey(line, data);
            else
                ReadValue(line, key, data);
        }
        return data;
    }

private:
    [[noreturn]] void Refuse(const std::string& why) const
    {
        throw RegistryError(REGDB_E_READREGDB, "The class registry " + path_ + " " + why + ".");
    }

    [[noreturn]] void RefuseLine(const std::string& what) const
    {
        Refuse("is damaged: line " + std::to_string(line_) + " " + what);
    }

    std::string_view TakeLine()
    {
        const std::size_t end = rest_.find('\n');
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        ++line_;
        return line;
    }

    /// Checks the first line and the end line, and takes both off.
    void ReadFrame()
    {
        if (rest_.substr(0, kTitle.size()) != kTitle)
            Refuse("is damaged: it doesn't begin as a class registry does");
        const std::string_view all = rest_;
        const std::string_view first = TakeLine();
        if (first.substr(kTitle.size()) != kVersion)
            Refuse("has a form that this version of the platform library doesn't know");
        if (rest_.size() < kEndLine || rest_.substr(rest_.size() - kEndLine, kEnd.size()) != kEnd ||
            rest_.back() != '\n')
            Refuse("is damaged: its end is missing");
        const std::string_view sum = rest_.substr(rest_.size() - kEndLine + kEnd.size(), 8);
        if (sum != Checksum(all.substr(0, all.size() - kEndLine)))
            Refuse("is damaged: its checksum doesn't fit");
        rest_.remove_suffix(kEndLine);
    }

    std::string ReadKey(std::string_view line, RegistryData& data) const
    {
        if (line.size() < 2 || line.back() != ']')
            RefuseLine("is not a key");
        try {
            return data.CreateKey(line.substr(1, line.size() - 2));
        } catch (const RegistryError& error) {
            RefuseLine("is not a key (" + std::string(error.what()) + ")");
        }
    }

    void ReadValue(std::string_view line, const std::string& key, RegistryData& data) const
    {
        std::string name;
        if (line.front() == '@')
            line.remove_prefix(1);
        else
            name = TakeQuoted(line);
        if (key.empty() || line.empty() || line.front() != '=')
            RefuseLine("is not a value");
        line.remove_prefix(1);
        std::string value = TakeQuoted(line);
        if (!line.empty() || data.FindValue(key, name))
            RefuseLine("is not a value");
        data.SetValue(key, name, std::move(value));
    }

    std::string TakeQuoted(std::string_view& line) const
    {
        std::string text;
        if (line.empty() || line.front() != '"')
            RefuseLine("is not a value");
        for (line.remove_prefix(1); !line.empty(); line.remove_prefix(1)) {
            if (line.front() == '"') {
                line.remove_prefix(1);
                return text;
            }
            text += line.front() == '\\' ? TakeEscaped(line) : line.front();
        }
        RefuseLine("is not a value");
    }

    /// Reads behind a backslash and stops at the last character that belongs to it.
    char TakeEscaped(std::string_view& line) const
    {
        line.remove_prefix(1);
        if (!line.empty() && (line.front() == '"' || line.front() == '\\'))
            return line.front();
        const int high = line.size() < 3 || line.front() != 'x' ? -1 : HexDigit(line[1]);
        const int low = high < 0 ? -1 : HexDigit(line[2]);
        if (low < 0)
            RefuseLine("is not a value");
        line.remove_prefix(2);
        return static_cast<char>(static_cast<unsigned char>(high << 4 | low));
    }

    std::string_view rest_;
    const std::string& path_;
    int line_ = 0;
};

}  // namespace

std::string WriteRegistryText(const RegistryData& data)
{
    std::string text(kTitle);
    text += kVersion;
    text += '\n';
    for (const auto& [path, values] : data.All()) {
        text += "\n[" + path + "]\n";
        for (const auto& [name, value] : values) {
            if (name.empty())
                text += '@';
            else
                AppendQuoted(text, name);
            text += '=';
            AppendQuoted(text, value);
            text += '\n';
        }
    }
    text += '\n';
    text += std::string(kEnd) + Checksum(text) + '\n';
    return text;
}

RegistryData ReadRegistryText(std::string_view text, const std::string& path)
{
    return Reader(text, path).Read();
}

}  // namespace tessara
