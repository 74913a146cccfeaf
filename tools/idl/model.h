#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tessara::idl {

/// One argument of a method.
struct Argument {
    std::string type;  ///< without its stars
    int pointers = 0;  ///< stars; an array counts as one more
    int elements = 0;  ///< of an array with a fixed size, else 0
    std::string name;
    bool in = false;
    bool out = false;
    bool optional = false;
    std::optional<std::string> defaultValue;  ///< as written, a string with its quotes
};

struct Method {
    std::string name;
    std::string help;
    std::string result;
    std::vector<Argument> arguments;
};

/// An interface, with its own methods in order.
struct Interface {
    std::string name;
    std::string id;  ///< digits and dashes, upper case, without braces
    std::string help;
    std::string base;
    std::vector<Method> methods;
};

struct Enumeration {
    std::string name;
    std::string id;
    std::vector<std::pair<std::string, std::string>> values;
};

struct Class {
    std::string name;
    std::string id;
    std::string help;
    std::vector<std::string> interfaces;  ///< the default one first
};

/// What a type description holds.
struct Library {
    std::string name;
    std::string id;
    std::string help;
    int major = 0;
    int minor = 0;
    unsigned locale = 0;
    std::vector<Enumeration> enumerations;
    std::vector<Interface> interfaces;
    std::vector<Class> classes;
};

}  // namespace tessara::idl
