// Makes the type library of a module from its IDL source, with the system's own writer: tessara-type-library IDL FILE
#include "idl/idl_source.h"
#include "idl/tokens.h"
#include "idl/type_library_win32.h"

#include <cstdlib>
#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: tessara-type-library IDL FILE\n";
        return EXIT_FAILURE;
    }
    try {
        using namespace tessara::idl;
        WriteTypeLibrary(ReadIdl(ReadSource(argv[1]), argv[1]), argv[2]);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "tessara-type-library: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
