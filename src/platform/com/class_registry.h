#pragma once

#include "com.h"
#include "module_registration.h"
#include "registry_scope.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// Whose store RegisterModule and UnregisterModule of this process write to from now on; the user's at first.
/// \return the scope until now
TESSARA_EXPORT RegistryScope SetRegistrationScope(RegistryScope scope) noexcept;

/// Path of the file that registrations of a scope are written to, empty where the user has no home.
TESSARA_EXPORT std::string RegistrationFile(RegistryScope scope);

/// Finds the module that is registered for a class: the user's registrations first, then the machine's.
/// \return S_OK; REGDB_E_CLASSNOTREG; REGDB_E_READREGDB, with a debug line, for a store that can't be read, since it
///         might name another module; REGDB_E_INVALIDVALUE, with a debug line, for a path that isn't absolute
TESSARA_EXPORT HRESULT FindRegisteredModule(REFCLSID clsid, std::string& modulePath) noexcept;

/// Finds the text of a registered type description, in the form that docs/registration.md tells.
/// \return S_OK; TYPE_E_LIBNOTREGISTERED; TYPE_E_CANTLOADLIBRARY for a registered file without one; REGDB_E_READREGDB
TESSARA_EXPORT HRESULT FindTypeDescription(const TypeLibraryId& library, std::string& text) noexcept;

/// One registration of a class.
struct RegisteredClass {
    CLSID id;
    std::string name;
    std::string progId;
    std::string threadingModel;
    std::string modulePath;
    RegistryScope scope;
    std::string store;  ///< path of the file that holds the registration
    bool hidden;        ///< a registration of the same class comes before it
};

struct RegistryContent {
    std::vector<RegisteredClass> classes;  ///< those that come first in a lookup first
    std::vector<std::string> faults;       ///< a sentence for each store that can't be read
};

/// Lists all registrations of classes that this process can see. \throws std::bad_alloc
TESSARA_EXPORT RegistryContent ListRegisteredClasses();

}  // namespace tessara
