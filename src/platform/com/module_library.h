#pragma once

#include "platform/com/com.h"

#include <string>

namespace tessara {

/// A component module, loaded for good: objects and vtables in it must outlive whoever made them.
class ModuleLibrary {
public:
    /// Loads the file at once. \return S_OK; CO_E_DLLNOTFOUND for a file that isn't there or that the system can't
    /// load; CO_E_ERRORINDLL for one without the export DllGetClassObject
    HRESULT Load(const std::string& path);

    /// The module's DllGetClassObject.
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out) const { return getClassObject_(clsid, iid, out); }

private:
    using GetClassObjectProc = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
    GetClassObjectProc getClassObject_ = nullptr;
};

}  // namespace tessara
