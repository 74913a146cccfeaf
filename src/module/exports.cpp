#include "module/module_locks.h"
#include "module/module_object.h"
#include "module/tessara_app.h"

extern "C" {

/// \return S_OK when no object, no factory, no palette and no lock of the module is held outside it, S_FALSE otherwise
TESSARA_EXPORT HRESULT DllCanUnloadNow()
{
    return ModuleLocks::Count() == 0 ? S_OK : S_FALSE;
}

/// Gives the class factory of CoTessara.
/// \return S_OK; E_POINTER for a null `out`; CLASS_E_CLASSNOTAVAILABLE for another class; E_NOINTERFACE for an
///         interface that a factory doesn't have; E_OUTOFMEMORY
TESSARA_EXPORT HRESULT DllGetClassObject(REFCLSID clsid, REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    return TheModule().GetClassObject(clsid, iid, out);
}

/// Enters the class and the type description into the registry of classes, with the path that the module was loaded
/// from. \return S_OK, or the first failure, with nothing entered
TESSARA_EXPORT HRESULT DllRegisterServer()
{
    return TheModule().RegisterServer();
}

/// Takes the module's entries out of the registry of classes. A failure goes to the debug output alone. \return S_OK
TESSARA_EXPORT HRESULT DllUnregisterServer()
{
    TheModule().UnregisterServer();
    return S_OK;
}
}
