// Works with the type description's source:
//   tessara-idl check IDL HEADER       says where the C++ header declares something else, and ends with 1 then
//   tessara-idl describe IDL FILE      writes the description as JSON
//   tessara-idl constants IDL FILE     writes a C++ header with the library's identity

#include "idl/description.h"
#include "idl/header_check.h"
#include "idl/idl_source.h"
#include "idl/tokens.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

namespace tessara::idl {

namespace {

int Check(const Library& library, const std::string& header)
{
    const auto differences = CompareWithHeader(library, ReadSource(header), header);
    for (const std::string& difference : differences)
        std::cerr << difference << '\n';
    if (!differences.empty())
        return EXIT_FAILURE;
    for (const Interface& one : library.interfaces)
        std::cout << one.name << ": " << one.methods.size() << " methods agree with " << header << '\n';
    return EXIT_SUCCESS;
}

int Write(const std::string& text, const std::string& path)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        throw SourceError(path + " can't be written");
    return EXIT_SUCCESS;
}

int Run(const std::string& command, const std::string& idl, const std::string& file)
{
    const Library library = ReadIdl(ReadSource(idl), idl);
    if (command == "check")
        return Check(library, file);
    if (command == "describe")
        return Write(WriteDescription(library), file);
    if (command == "constants")
        return Write(WriteConstants(library), file);
    throw SourceError("there is no command '" + command + "'");
}

}  // namespace

}  // namespace tessara::idl

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: tessara-idl check|describe|constants IDL FILE\n";
        return EXIT_FAILURE;
    }
    try {
        return tessara::idl::Run(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "tessara-idl: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
