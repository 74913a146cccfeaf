#pragma once

#include "types.h"

#include <string_view>

namespace tessara {

/// What identifies the type description of a module.
struct TypeLibraryId {
    GUID id;
    WORD major;
    WORD minor;
    DWORD locale;            ///< language identifier, as 0x409
    const char* helpString;  ///< name of the library for people
};

/// What a module enters into the registry of classes.
struct ModuleRegistration {
    std::string_view modulePath;  ///< absolute path of the module's file, which holds the resource TYPELIB 1
    std::string_view script;      ///< in the language that docs/registration.md tells
    TypeLibraryId typeLibrary;
};

/// Carries out a module's script and registers its type description: all of it or, after a failure, nothing. The store
/// is that of SetRegistrationScope; on Windows it is the machine's part of the system's registry or, where that may not
/// be written to, the user's. What went wrong goes to the debug output in one line.
/// \return S_OK; E_FAIL for a script that can't be carried out; TYPE_E_CANTLOADLIBRARY for a file without a type
///         description; REGDB_E_READREGDB for a damaged store, which is left as it is; REGDB_E_WRITEREGDB;
///         E_OUTOFMEMORY
TESSARA_EXPORT HRESULT RegisterModule(const ModuleRegistration& registration) noexcept;

/// Takes out of the store what RegisterModule entered, by the rules of the script. A store that doesn't exist is not
/// made. Results as RegisterModule; the file's type description isn't asked for. On Windows both parts of the registry
/// lose the entries, as far as they may be written to.
TESSARA_EXPORT HRESULT UnregisterModule(const ModuleRegistration& registration) noexcept;

}  // namespace tessara
