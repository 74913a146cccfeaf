#include "module/module_locks.h"
#include "module/object_map.h"
#include "platform/com/types.h"

namespace {

ObjectMap g_objectMap;

}  // namespace

extern "C" {

/// \return S_OK when no object, no factory and no lock of the module is held outside it, S_FALSE otherwise
TESSARA_EXPORT HRESULT DllCanUnloadNow()
{
    return ModuleLocks::Count() == 0 ? S_OK : S_FALSE;
}

/// Gives the class factory of CoTessara.
/// \return S_OK; E_POINTER for a null `out`; CLASS_E_CLASSNOTAVAILABLE for another class; E_NOINTERFACE for an
/// interface
///         that a factory doesn't have; E_OUTOFMEMORY
TESSARA_EXPORT HRESULT DllGetClassObject(REFCLSID clsid, REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    return g_objectMap.GetClassObject(clsid, iid, out);
}

/// Not offered yet: hosts name the module's file to the class table.
TESSARA_EXPORT HRESULT DllRegisterServer()
{
    return E_NOTIMPL;
}

TESSARA_EXPORT HRESULT DllUnregisterServer()
{
    return E_NOTIMPL;
}
}
