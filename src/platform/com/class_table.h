#pragma once

#include "platform/com/com_ptr.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tessara {

class ModuleLibrary;

/// The classes that this process can make without the registry: factories that the host registered, and modules that
/// serve a class; and the modules that are loaded. Safe to use from several threads.
class ClassTable {
public:
    /// The one of this process. It is never destroyed: factories of modules that are gone by then must not be released
    /// at the process's end.
    static ClassTable& Instance();

    /// \return a number that identifies the entry, never 0
    DWORD AddFactory(REFCLSID clsid, IUnknown* factory);

    /// \return the entry's factory, for the caller to release, or null
    ComPtr<IUnknown> RemoveFactory(DWORD cookie);

    /// The newest factory of a class, or null.
    ComPtr<IUnknown> FindFactory(REFCLSID clsid) const;

    void AddModuleClass(REFCLSID clsid, const std::string& path);

    /// Finds the module of a class, here or in the registry, and loads it where it isn't loaded yet. It stays loaded at
    /// least as long as `module` holds it. \return as CoGetClassObject
    HRESULT FindModule(REFCLSID clsid, std::shared_ptr<ModuleLibrary>& module);

    /// See CoFreeUnusedLibraries.
    void FreeUnusedModules();

private:
    struct FactoryEntry {
        CLSID clsid;
        DWORD cookie;
        ComPtr<IUnknown> factory;
    };
    struct ModuleClass {
        CLSID clsid;
        std::string path;
    };

    ClassTable() = default;
    HRESULT FindModulePath(REFCLSID clsid, std::string& path) const;
    HRESULT LoadModule(const std::string& path, std::shared_ptr<ModuleLibrary>& module);
    bool HasFactoryOf(const ModuleLibrary& module) const;

    mutable std::mutex mutex_;
    std::vector<FactoryEntry> factories_;
    std::vector<ModuleClass> moduleClasses_;
    std::map<std::string, std::shared_ptr<ModuleLibrary>> modules_;
    DWORD nextCookie_ = 1;
};

}  // namespace tessara
