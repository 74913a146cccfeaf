#include "idl/description.h"

#include <algorithm>

namespace tessara::idl {

namespace {

constexpr int kMethodsOfUnknown = 3;

std::string Quoted(const std::string& text)
{
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += c;
    }
    return out + '"';
}

std::string Field(const char* name, const std::string& text)
{
    return Quoted(name) + ": " + Quoted(text);
}

std::string Bool(bool value)
{
    return value ? "true" : "false";
}

std::string Braced(const std::string& id)
{
    return '{' + id + '}';
}

/// A list with one element a line.
template <class Element, class Write>
std::string List(const std::vector<Element>& elements, const std::string& indent, Write&& write)
{
    std::string out = "[";
    for (const Element& element : elements)
        out += (out.size() > 1 ? ",\n" : "\n") + indent + "  " + write(element);
    return elements.empty() ? "[]" : out + '\n' + indent + ']';
}

/// An argument that a caller leaves out stands for a null object or a null string.
std::string Default(const Argument& argument)
{
    return std::string("{\"type\": \"") + (argument.defaultValue->starts_with('"') ? "BSTR" : "IUnknown*") +
           "\", \"value\": null}";
}

std::string WriteArgument(const Argument& argument)
{
    std::string out = "{" + Field("name", argument.name) + ", " + Field("type", argument.type) +
                      ", \"pointers\": " + std::to_string(argument.pointers);
    if (argument.elements > 0)
        out += ", \"elements\": " + std::to_string(argument.elements);
    out += ", \"in\": " + Bool(argument.in) + ", \"out\": " + Bool(argument.out);
    if (argument.optional)
        out += ", \"optional\": true";
    if (argument.defaultValue)
        out += ", \"default\": " + Default(argument);
    return out + '}';
}

std::string WriteMethod(const Method& method, std::ptrdiff_t slot)
{
    return "{\"slot\": " + std::to_string(slot) + ", " + Field("name", method.name) + ", " +
           Field("result", method.result) + ", " + Field("help", method.help) +
           ",\n       \"arguments\": " + List(method.arguments, "       ", WriteArgument) + '}';
}

std::string WriteInterface(const Interface& one)
{
    return "{" + Field("name", one.name) + ", " + Field("id", Braced(one.id)) + ", " + Field("help", one.help) + ", " +
           Field("base", one.base) + ", \"dispatchable\": false,\n     \"methods\": " +
           List(one.methods, "     ",
                [&one](const Method& method) {
                    return WriteMethod(method, kMethodsOfUnknown + (&method - one.methods.data()));
                }) +
           '}';
}

std::string WriteEnumeration(const Enumeration& one)
{
    return "{" + Field("name", one.name) + ", " + Field("id", Braced(one.id)) + ", \"values\": " +
           List(one.values, "    ",
                [](const auto& value) {
                    return "{" + Field("name", value.first) + ", \"value\": " + value.second + '}';
                }) +
           '}';
}

std::string WriteClass(const Class& one)
{
    return "{" + Field("name", one.name) + ", " + Field("id", Braced(one.id)) + ", " + Field("help", one.help) +
           ", \"interfaces\": " + List(one.interfaces, "    ", Quoted) + '}';
}

/// An identifier as the initialiser of a GUID.
std::string Initialiser(const std::string& id)
{
    std::string out = "{0x" + id.substr(0, 8) + ", 0x" + id.substr(9, 4) + ", 0x" + id.substr(14, 4) + ", {";
    std::string bytes = id.substr(19);
    bytes.erase(std::remove(bytes.begin(), bytes.end(), '-'), bytes.end());
    for (std::size_t i = 0; i < bytes.size(); i += 2)
        out += (i > 0 ? ", 0x" : "0x") + bytes.substr(i, 2);
    return out + "}}";
}

}  // namespace

std::string WriteDescription(const Library& library)
{
    return "{\n  " + Field("library", library.name) + ",\n  " + Field("id", Braced(library.id)) + ",\n  " +
           Field("version", std::to_string(library.major) + '.' + std::to_string(library.minor)) +
           ",\n  \"locale\": " + std::to_string(library.locale) + ",\n  " + Field("help", library.help) +
           ",\n  \"enumerations\": " + List(library.enumerations, "  ", WriteEnumeration) +
           ",\n  \"interfaces\": " + List(library.interfaces, "  ", WriteInterface) +
           ",\n  \"classes\": " + List(library.classes, "  ", WriteClass) + "\n}\n";
}

std::string WriteConstants(const Library& library)
{
    return "#pragma once\n\n#include \"platform/com/module_registration.h\"\n\n/// The type description that the "
           "module "
           "carries.\ninline constexpr tessara::TypeLibraryId kTypeLibrary = {\n    " +
           Initialiser(library.id) + ",\n    " + std::to_string(library.major) + ", " + std::to_string(library.minor) +
           ", " + std::to_string(library.locale) + ", " + Quoted(library.help) + "};\n";
}

}  // namespace tessara::idl
