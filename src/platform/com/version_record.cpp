#include "platform/com/version_record.h"

#include "platform/com/module_resource.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace tessara {

namespace {

/// One line of a record: a word, then its numbers or texts.
class Line {
public:
    explicit Line(std::string_view text) : rest_(text) {}

    std::string_view Word()
    {
        SkipBlanks();
        const std::string_view word = rest_.substr(0, rest_.find_first_of(" ,"));
        rest_.remove_prefix(word.size());
        return word;
    }

    template <class Number>
    bool Take(Number& number)
    {
        std::string_view word = Word();
        if (rest_.starts_with(','))
            rest_.remove_prefix(1);
        const bool hex = word.starts_with("0x");
        if (hex)
            word.remove_prefix(2);
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number, hex ? 16 : 10);
        return error == std::errc() && end == word.data() + word.size();
    }

    bool Take(VersionRecord::Version& version)
    {
        return Take(version[0]) && Take(version[1]) && Take(version[2]) && Take(version[3]);
    }

    bool Take(std::string& text)
    {
        SkipBlanks();
        const std::size_t end = rest_.starts_with('"') ? rest_.find('"', 1) : std::string_view::npos;
        if (end == std::string_view::npos)
            return false;
        text = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        return true;
    }

    bool AtEnd()
    {
        SkipBlanks();
        return rest_.empty();
    }

private:
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }

    std::string_view rest_;
};

bool TakeString(Line& line, VersionRecord& record)
{
    std::string name, text;
    if (!line.Take(name) || !line.Take(text))
        return false;
    record.strings[name] = text;
    return true;
}

bool TakeField(std::string_view word, Line& line, VersionRecord& record)
{
    return word == "FILEVERSION"      ? line.Take(record.fileVersion)
           : word == "PRODUCTVERSION" ? line.Take(record.productVersion)
           : word == "FILEFLAGS"      ? line.Take(record.fileFlags)
           : word == "FILEOS"         ? line.Take(record.fileOs)
           : word == "FILETYPE"       ? line.Take(record.fileType)
           : word == "TRANSLATION"    ? line.Take(record.language) && line.Take(record.codePage)
           : word == "VALUE"          ? TakeString(line, record)
                                      : false;
}

}  // namespace

std::optional<VersionRecord> ReadVersionRecord(const std::string& modulePath)
{
    const auto text = ReadModuleResource(modulePath, "VERSION", 1);
    if (!text)
        return std::nullopt;
    VersionRecord record;
    for (std::string_view rest = *text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        Line line(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.AtEnd())
            continue;
        const std::string_view word = line.Word();
        if (!TakeField(word, line, record) || !line.AtEnd())
            return std::nullopt;
    }
    return record;
}

}  // namespace tessara
