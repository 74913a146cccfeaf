#include "idl/header_check.h"

#include "idl/tokens.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace tessara::idl {

namespace {

/// What a type of the description is called in C++, where its width is stated.
std::string CppType(const std::string& type)
{
    static const std::map<std::string, std::string> names = {{"long", "LONG"}, {"unsigned", "UINT"}};
    const auto found = names.find(type);
    return found == names.end() ? type : found->second;
}

std::string Declaration(const std::string& type, const Argument& argument)
{
    return type + std::string(static_cast<std::size_t>(argument.pointers), '*') + ' ' + argument.name;
}

class HeaderReader {
public:
    HeaderReader(std::string_view header, const std::string& file) : header_(header), file_(file) {}

    /// The methods that the C++ interface declares itself, in order.
    std::vector<Method> Methods(const Interface& wanted) const
    {
        Tokens tokens = Find({"struct", wanted.name, ":", wanted.base, "{"});
        std::vector<Method> methods;
        while (!tokens.TakeIf("}")) {
            if (tokens.TakeIf("protected")) {
                for (const std::string& word : {std::string(":"), std::string("~"), wanted.name})
                    tokens.Expect(word);
                for (const char* word : {"(", ")", "=", "default", ";"})
                    tokens.Expect(word);
            } else {
                methods.push_back(TakeMethod(tokens));
            }
        }
        return methods;
    }

    std::vector<std::pair<std::string, std::string>> Values(const Enumeration& wanted) const
    {
        Tokens tokens = Find({"enum", wanted.name, ":", "std", "::", "int32_t", "{"});
        std::vector<std::pair<std::string, std::string>> values;
        do {
            std::string name = tokens.Take();
            tokens.Expect("=");
            values.emplace_back(std::move(name), tokens.Take());
        } while (tokens.TakeIf(",") && tokens.Peek() != "}");
        tokens.Expect("}");
        return values;
    }

    /// The identifier that a constant is set to, in the form of the model.
    std::string Id(const std::vector<std::string>& constant) const
    {
        std::vector<std::string> words = constant;
        words.insert(words.end(), {"=", "{"});
        Tokens tokens = Find(words);
        std::string digits = Hex(tokens, 8) + '-';
        tokens.Expect(",");
        digits += Hex(tokens, 4) + '-';
        tokens.Expect(",");
        digits += Hex(tokens, 4) + '-';
        tokens.Expect(",");
        tokens.Expect("{");
        for (int i = 0; i < 8; ++i) {
            digits += (i == 2 ? "-" : "") + Hex(tokens, 2);
            tokens.Expect(i < 7 ? "," : "}");
        }
        return digits;
    }

private:
    /// The words of the header behind the first place with these words in a row.
    Tokens Find(const std::vector<std::string>& words) const
    {
        Tokens tokens(header_, file_);
        while (!tokens.AtEnd()) {
            std::size_t fitting = 0;
            while (fitting < words.size() && tokens.Peek(fitting) == words[fitting])
                ++fitting;
            if (fitting == words.size()) {
                for (std::size_t i = 0; i < words.size(); ++i)
                    tokens.Take();
                return tokens;
            }
            tokens.Take();
        }
        std::string text;
        for (const std::string& word : words)
            text += ' ' + word;
        throw SourceError(file_ + ": there is no '" + text.substr(1) + "'");
    }

    static Method TakeMethod(Tokens& tokens)
    {
        Method method;
        tokens.Expect("virtual");
        method.result = tokens.Take();
        tokens.Expect("STDMETHODCALLTYPE");
        method.name = tokens.Take();
        tokens.Expect("(");
        if (!tokens.TakeIf(")")) {
            do
                method.arguments.push_back(TakeArgument(tokens));
            while (tokens.TakeIf(","));
            tokens.Expect(")");
        }
        for (const char* word : {"=", "0", ";"})
            tokens.Expect(word);
        return method;
    }

    static Argument TakeArgument(Tokens& tokens)
    {
        Argument argument;
        argument.type = tokens.Take();
        while (tokens.TakeIf("*"))
            ++argument.pointers;
        argument.name = tokens.Take();
        return argument;
    }

    static std::string Hex(Tokens& tokens, std::size_t digits)
    {
        const std::string word = tokens.Take();
        std::uint32_t value = 0;
        const char* end = word.data() + word.size();
        if (!word.starts_with("0x") || std::from_chars(word.data() + 2, end, value, 16).ptr != end)
            tokens.Refuse("has '" + word + "' where a hexadecimal number is expected");
        std::string text;
        for (std::size_t i = digits; i-- > 0;)
            text += "0123456789ABCDEF"[value >> 4 * i & 0xF];
        return text;
    }

    std::string_view header_;
    std::string file_;
};

class Comparison {
public:
    explicit Comparison(const std::string& file) : file_(file) {}

    void Expect(const std::string& what, const std::string& inHeader, const std::string& inDescription)
    {
        if (inHeader != inDescription)
            differences.push_back(file_ + ": " + what + " is '" + inHeader + "', in the description '" + inDescription +
                                  "'");
    }

    void Methods(const std::string& interface, const std::vector<Method>& header,
                 const std::vector<Method>& description)
    {
        Expect("the number of methods of " + interface, std::to_string(header.size()),
               std::to_string(description.size()));
        for (std::size_t i = 0; i < std::min(header.size(), description.size()); ++i) {
            const std::string place = "method " + std::to_string(i + 1) + " of " + interface;
            Expect(place, header[i].name, description[i].name);
            if (header[i].name == description[i].name)
                Arguments(place + ", " + header[i].name, header[i], description[i]);
        }
    }

    std::vector<std::string> differences;

private:
    void Arguments(const std::string& place, const Method& header, const Method& description)
    {
        Expect(place + ": the result", header.result, CppType(description.result));
        Expect(place + ": the number of arguments", std::to_string(header.arguments.size()),
               std::to_string(description.arguments.size()));
        for (std::size_t i = 0; i < std::min(header.arguments.size(), description.arguments.size()); ++i) {
            const Argument& wanted = description.arguments[i];
            Expect(place + ": argument " + std::to_string(i + 1),
                   Declaration(header.arguments[i].type, header.arguments[i]),
                   Declaration(CppType(wanted.type), wanted));
        }
    }

    std::string file_;
};

}  // namespace

std::vector<std::string> CompareWithHeader(const Library& library, std::string_view header, const std::string& file)
{
    const HeaderReader reader(header, file);
    Comparison comparison(file);
    comparison.Expect("the id of " + library.name, reader.Id({"LIBID_" + library.name}), library.id);
    for (const Class& one : library.classes)
        comparison.Expect("the id of " + one.name, reader.Id({"CLSID_" + one.name}), one.id);
    for (const Enumeration& one : library.enumerations) {
        comparison.Expect("the id of " + one.name, reader.Id({"ID_" + one.name}), one.id);
        const auto values = reader.Values(one);
        comparison.Expect("the number of values of " + one.name, std::to_string(values.size()),
                          std::to_string(one.values.size()));
        for (std::size_t i = 0; i < std::min(values.size(), one.values.size()); ++i)
            comparison.Expect("value " + std::to_string(i + 1) + " of " + one.name,
                              values[i].first + " = " + values[i].second,
                              one.values[i].first + " = " + one.values[i].second);
    }
    for (const Interface& one : library.interfaces) {
        comparison.Expect("the id of " + one.name, reader.Id({"InterfaceId", "<", one.name, ">"}), one.id);
        comparison.Methods(one.name, reader.Methods(one), one.methods);
    }
    return comparison.differences;
}

}  // namespace tessara::idl
