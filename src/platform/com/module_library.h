#pragma once

#include "platform/com/com.h"

#include <memory>
#include <string>

namespace tessara {

/// A component module in memory, from its loading to the end of this object's life. Other holders of the same file, in
/// this process, keep it loaded beyond that.
class ModuleLibrary {
public:
    /// Loads a module's file. Why it can't be loaded goes to the debug output in one line.
    /// \return S_OK; CO_E_DLLNOTFOUND for a file that isn't there; CO_E_ERRORINDLL for one that the system can't load
    ///         or that lacks the export DllGetClassObject
    /// \throws std::bad_alloc
    static HRESULT Load(const std::string& path, std::shared_ptr<ModuleLibrary>& module);

    ModuleLibrary(const ModuleLibrary&) = delete;
    ModuleLibrary& operator=(const ModuleLibrary&) = delete;
    ~ModuleLibrary();

    /// The module's DllGetClassObject.
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const { return getClassObject_(clsid, iid, out); }

    /// Whether the module says that nothing of it is in use. One without the export DllCanUnloadNow never does. The
    /// class table asks under its lock: the export doesn't come back to it.
    bool CanUnload() const { return canUnloadNow_ && canUnloadNow_() == S_OK; }

    /// An export without arguments, as DllRegisterServer, or null.
    using Procedure = HRESULT(STDMETHODCALLTYPE*)();
    Procedure FindProcedure(const char* name) const noexcept;

    /// Whether the table of methods of an interface pointer lies in this module.
    bool Implements(const IUnknown* object) const noexcept;

private:
    using GetClassObjectProc = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);

    explicit ModuleLibrary(void* handle) noexcept : handle_(handle) {}

    void* handle_;
    GetClassObjectProc getClassObject_ = nullptr;
    Procedure canUnloadNow_ = nullptr;
};

}  // namespace tessara
