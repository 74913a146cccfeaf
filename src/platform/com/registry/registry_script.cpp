#include "platform/com/registry/registry_script.h"

#include "platform/com/registry/registry_data.h"
#include "platform/com/registry/registry_error.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace tessara {

namespace {

constexpr int kDeepest = 32;

enum class Rule { Remove, NoRemove, ForceRemove };

/// One key of a script with what stands in its braces.
struct ScriptKey {
    std::string name;
    Rule rule = Rule::Remove;
    std::vector<std::pair<std::string, std::string>> values;  // the default one has an empty name
    std::vector<ScriptKey> keys;
};

class ScriptParser {
public:
    ScriptParser(std::string_view script, std::string_view modulePath) : rest_(script), modulePath_(modulePath)
    {
        Next();
    }

    std::vector<ScriptKey> Parse()
    {
        if (!TakeWord("HKCR"))
            Refuse("doesn't begin with HKCR");
        ScriptKey root;
        ParseBody(root, 0);
        if (word_)
            Refuse("goes on behind its end");
        return std::move(root.keys);
    }

private:
    [[noreturn]] void Refuse(const char* what) const
    {
        throw RegistryError(E_FAIL, "The registration script of " + std::string(modulePath_) + " " + what + " (line " +
                                        std::to_string(line_) + ").");
    }

    void SkipBlanks()
    {
        while (!rest_.empty() && (rest_.front() == ' ' || (rest_.front() >= '\t' && rest_.front() <= '\r'))) {
            line_ += rest_.front() == '\n';
            rest_.remove_prefix(1);
        }
    }

    /// Reads the next word into word_: a brace or "=", a quoted text, or whatever ends at one of these or a blank. A
    /// class id in braces, which has no blank behind its opening one, is a word as well.
    void Next()
    {
        SkipBlanks();
        quoted_ = false;
        if (rest_.empty()) {
            word_.reset();
        } else if (rest_.front() == '\'') {
            word_ = TakeQuoted();
            quoted_ = true;
        } else if (rest_.front() == '=' || IsLoneBrace()) {
            word_ = std::string(1, rest_.front());
            rest_.remove_prefix(1);
        } else {
            const std::size_t length = std::min(rest_.find_first_of(" \t\r\n\v\f='"), rest_.size());
            word_ = std::string(rest_.substr(0, length));
            rest_.remove_prefix(length);
        }
    }

    bool IsLoneBrace() const
    {
        return (rest_.front() == '{' || rest_.front() == '}') &&
               (rest_.size() == 1 || std::string_view(" \t\r\n\v\f").find(rest_[1]) != std::string_view::npos);
    }

    std::string TakeQuoted()
    {
        std::string text;
        for (rest_.remove_prefix(1); !rest_.empty(); rest_.remove_prefix(1)) {
            if (rest_.front() == '\n')
                break;
            if (rest_.front() == '\'') {
                if (rest_.size() < 2 || rest_[1] != '\'') {
                    rest_.remove_prefix(1);
                    return text;
                }
                rest_.remove_prefix(1);
            }
            text += rest_.front();
        }
        Refuse("has a quote without an end");
    }

    bool TakeWord(std::string_view word)
    {
        if (quoted_ || word_ != word)
            return false;
        Next();
        return true;
    }

    /// Takes a name or a value, with the replacements made.
    std::string TakeText(const char* missing)
    {
        if (!word_ || (!quoted_ && (*word_ == "{" || *word_ == "}" || *word_ == "=")))
            Refuse(missing);
        std::string text = Replace(*word_);
        Next();
        return text;
    }

    std::string Replace(std::string_view text) const
    {
        std::string out;
        while (!text.empty()) {
            const std::size_t percent = std::min(text.find('%'), text.size());
            out += text.substr(0, percent);
            text.remove_prefix(percent);
            if (text.empty())
                break;
            const std::size_t end = text.find('%', 1);
            const std::string_view name = text.substr(1, end == std::string_view::npos ? end : end - 1);
            if (end == std::string_view::npos || (!name.empty() && name != "MODULE"))
                Refuse("asks for a replacement other than %MODULE%");
            out += name.empty() ? std::string_view("%") : modulePath_;
            text.remove_prefix(end + 1);
        }
        return out;
    }

    std::string ParseValue()
    {
        if (!TakeWord("s"))
            Refuse("has a value that is no string");
        return TakeText("has no text behind the type of a value");
    }

    void ParseBody(ScriptKey& key, int depth)
    {
        if (!TakeWord("{"))
            Refuse("has no brace where one must open");
        if (depth > kDeepest)
            Refuse("has too many keys below each other");
        while (!TakeWord("}")) {
            if (!word_)
                Refuse("ends inside of a brace");
            if (TakeWord("val")) {
                std::string name = TakeText("has a value without a name");
                if (name.empty() || !TakeWord("="))
                    Refuse("has a value without a name or a text");
                key.values.emplace_back(std::move(name), ParseValue());
            } else {
                key.keys.push_back(ParseKey(depth));
            }
        }
    }

    ScriptKey ParseKey(int depth)
    {
        ScriptKey key;
        if (TakeWord("NoRemove"))
            key.rule = Rule::NoRemove;
        else if (TakeWord("ForceRemove"))
            key.rule = Rule::ForceRemove;
        key.name = TakeText("has a key without a name");
        if (TakeWord("="))
            key.values.emplace_back(std::string(), ParseValue());
        if (!quoted_ && word_ == "{")
            ParseBody(key, depth + 1);
        return key;
    }

    std::string_view rest_;
    std::string_view modulePath_;
    std::optional<std::string> word_;  // the next one; nothing at the end
    bool quoted_ = false;
    int line_ = 1;
};

std::string Join(const std::string& above, const std::string& name)
{
    return above.empty() ? name : above + '\\' + name;
}

void Register(const ScriptKey& key, const std::string& above, RegistryData& data)
{
    const std::string path = Join(above, key.name);
    if (key.rule == Rule::ForceRemove)
        data.DeleteTree(path);
    data.CreateKey(path);
    for (const auto& [name, value] : key.values)
        data.SetValue(path, name, value);
    for (const ScriptKey& below : key.keys)
        Register(below, path, data);
}

void Unregister(const ScriptKey& key, const std::string& above, RegistryData& data)
{
    const std::string path = Join(above, key.name);
    if (key.rule == Rule::ForceRemove) {
        data.DeleteTree(path);
        return;
    }
    for (const ScriptKey& below : key.keys)
        Unregister(below, path, data);
    if (key.rule == Rule::NoRemove)
        return;
    for (const auto& value : key.values)
        data.DeleteValue(path, value.first);
    if (data.Subkeys(path).empty())
        data.DeleteTree(path);
}

}  // namespace

void RunRegistryScript(std::string_view script, ScriptAction action, std::string_view modulePath, RegistryData& data)
{
    for (const ScriptKey& key : ScriptParser(script, modulePath).Parse()) {
        if (action == ScriptAction::Register)
            Register(key, {}, data);
        else
            Unregister(key, {}, data);
    }
}

}  // namespace tessara
