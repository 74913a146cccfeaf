#pragma once

#include "platform/com/module_registration.h"

#include <string>

class ObjectMap;

/// What the module knows of itself between its start and its end.
class ModuleObject {
public:
    /// \param objectMap outlives this object
    /// \param path absolute path of the module's file; empty where it couldn't be found out, and then the module serves
    /// its class but can't be registered
    /// \param typeLibrary identity of the type description in that file
    void Init(ObjectMap& objectMap, std::string path, const tessara::TypeLibraryId& typeLibrary) noexcept;

    /// Releases the cached class factory.
    void Term() noexcept;

    /// Results as DllGetClassObject; `out` is not null.
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const;

    /// Enters the class and the type description into the registry. \return S_OK, or the first failure, with nothing
    /// entered
    HRESULT RegisterServer() const noexcept;

    HRESULT UnregisterServer() const noexcept;

private:
    tessara::ModuleRegistration Registration() const noexcept;

    ObjectMap* objectMap_ = nullptr;
    std::string path_;
    tessara::TypeLibraryId typeLibrary_ = {};
};
