#include "idl/idl_source.h"

#include "idl/tokens.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace tessara::idl {

namespace {

using Attributes = std::map<std::string, std::string>;

std::string UpperCase(std::string text)
{
    for (char& c : text) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

template <class Named>
auto FindNamed(const std::vector<Named>& list, const std::string& name)
{
    return std::find_if(list.begin(), list.end(), [&name](const Named& one) { return one.name == name; });
}

class Parser {
public:
    Parser(std::string_view source, const std::string& file) : tokens_(source, file) {}

    Library Parse()
    {
        while (!tokens_.AtEnd()) {
            if (tokens_.TakeIf("import")) {
                tokens_.TakeString();
                tokens_.Expect(";");
            } else if (tokens_.TakeIf("typedef")) {
                ParseEnumeration();
            } else {
                ParseDefinition(TakeAttributes());
            }
        }
        if (library_.name.empty())
            tokens_.Refuse("declares no library");
        return std::move(library_);
    }

private:
    /// Takes a list in brackets: what stands in an attribute's parentheses, without blanks, or nothing.
    Attributes TakeAttributes()
    {
        Attributes attributes;
        if (!tokens_.TakeIf("["))
            return attributes;
        do {
            const std::string name = tokens_.Take();
            std::string& value = attributes[name];
            if (tokens_.TakeIf("(")) {
                while (!tokens_.TakeIf(")"))
                    value += tokens_.Take();
            }
        } while (tokens_.TakeIf(","));
        tokens_.Expect("]");
        return attributes;
    }

    std::string TakeId(Attributes& attributes) const
    {
        const std::string id = UpperCase(attributes["uuid"]);
        if (id.size() != 36)
            tokens_.Refuse("has a definition without uuid");
        return id;
    }

    static std::string HelpOf(Attributes& attributes)
    {
        const std::string& help = attributes["helpstring"];
        return help.size() < 2 ? std::string() : help.substr(1, help.size() - 2);
    }

    void ParseEnumeration()
    {
        Attributes attributes = TakeAttributes();
        Enumeration enumeration;
        enumeration.id = TakeId(attributes);
        tokens_.Expect("enum");
        enumeration.name = tokens_.Take();
        tokens_.Expect("{");
        do {
            std::string name = tokens_.Take();
            tokens_.Expect("=");
            enumeration.values.emplace_back(std::move(name), tokens_.Take());
        } while (tokens_.TakeIf(","));
        tokens_.Expect("}");
        tokens_.Expect(enumeration.name);
        tokens_.Expect(";");
        enumerations_.push_back(std::move(enumeration));
    }

    void ParseDefinition(Attributes attributes)
    {
        if (tokens_.TakeIf("interface"))
            ParseInterface(attributes);
        else if (tokens_.TakeIf("library"))
            ParseLibrary(attributes);
        else
            tokens_.Refuse("has '" + std::string(tokens_.Peek()) + "' where a definition is expected");
    }

    void ParseInterface(Attributes& attributes)
    {
        Interface definition;
        definition.id = TakeId(attributes);
        definition.help = HelpOf(attributes);
        definition.name = tokens_.Take();
        tokens_.Expect(":");
        definition.base = tokens_.Take();
        tokens_.Expect("{");
        while (!tokens_.TakeIf("}"))
            definition.methods.push_back(ParseMethod());
        tokens_.TakeIf(";");
        interfaces_.push_back(std::move(definition));
    }

    Method ParseMethod()
    {
        Method method;
        Attributes attributes = TakeAttributes();
        method.help = HelpOf(attributes);
        method.result = tokens_.Take();
        method.name = tokens_.Take();
        tokens_.Expect("(");
        if (!tokens_.TakeIf(")")) {
            do
                method.arguments.push_back(ParseArgument());
            while (tokens_.TakeIf(","));
            tokens_.Expect(")");
        }
        tokens_.Expect(";");
        return method;
    }

    Argument ParseArgument()
    {
        Argument argument;
        const Attributes attributes = TakeAttributes();
        argument.in = attributes.contains("in");
        argument.out = attributes.contains("out");
        argument.optional = attributes.contains("optional");
        if (const auto value = attributes.find("defaultvalue"); value != attributes.end())
            argument.defaultValue = value->second;
        argument.type = tokens_.Take();
        while (tokens_.TakeIf("*"))
            ++argument.pointers;
        argument.name = tokens_.Take();
        if (tokens_.TakeIf("[")) {
            argument.elements = TakeNumber<int>(tokens_.Take());
            ++argument.pointers;
            tokens_.Expect("]");
        }
        if (!argument.in && !argument.out)
            tokens_.Refuse("has the argument '" + argument.name + "' without a direction");
        return argument;
    }

    template <class Number>
    Number TakeNumber(std::string_view text) const
    {
        const bool hex = text.starts_with("0x");
        Number number = 0;
        const char* end = text.data() + text.size();
        if (text.empty() || std::from_chars(text.data() + (hex ? 2 : 0), end, number, hex ? 16 : 10).ptr != end)
            tokens_.Refuse("has '" + std::string(text) + "' where a number is expected");
        return number;
    }

    void ParseLibrary(Attributes& attributes)
    {
        library_.id = TakeId(attributes);
        library_.help = HelpOf(attributes);
        const std::string version = attributes["version"];
        const std::size_t dot = std::min(version.find('.'), version.size());
        library_.major = TakeNumber<int>(version.substr(0, dot));
        library_.minor = TakeNumber<int>(version.substr(std::min(dot + 1, version.size())));
        library_.locale = TakeNumber<unsigned>(attributes["lcid"]);
        library_.name = tokens_.Take();
        tokens_.Expect("{");
        while (!tokens_.TakeIf("}"))
            ParseMember();
        tokens_.TakeIf(";");
    }

    /// One thing that belongs to the library: the name of something that stands before it, or a class.
    void ParseMember()
    {
        Attributes attributes = TakeAttributes();
        if (tokens_.TakeIf("enum")) {
            library_.enumerations.push_back(TakeDeclared(enumerations_));
        } else if (tokens_.TakeIf("interface")) {
            library_.interfaces.push_back(TakeDeclared(interfaces_));
        } else {
            tokens_.Expect("coclass");
            library_.classes.push_back(ParseClass(attributes));
        }
        tokens_.Expect(";");
    }

    template <class Named>
    Named TakeDeclared(const std::vector<Named>& list)
    {
        const auto found = FindNamed(list, std::string(tokens_.Peek()));
        if (found == list.end())
            tokens_.Refuse("names '" + std::string(tokens_.Peek()) + "', which isn't declared");
        tokens_.Take();
        return *found;
    }

    Class ParseClass(Attributes& attributes)
    {
        Class definition;
        definition.id = TakeId(attributes);
        definition.help = HelpOf(attributes);
        definition.name = tokens_.Take();
        tokens_.Expect("{");
        while (!tokens_.TakeIf("}")) {
            const bool isDefault = TakeAttributes().contains("default");
            tokens_.Expect("interface");
            auto& interfaces = definition.interfaces;
            interfaces.insert(isDefault ? interfaces.begin() : interfaces.end(), TakeDeclared(interfaces_).name);
            tokens_.Expect(";");
        }
        return definition;
    }

    Tokens tokens_;
    Library library_;
    std::vector<Enumeration> enumerations_;
    std::vector<Interface> interfaces_;
};

}  // namespace

Library ReadIdl(std::string_view source, const std::string& file)
{
    return Parser(source, file).Parse();
}

}  // namespace tessara::idl
