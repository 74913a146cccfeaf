#include "platform/com/class_table.h"
#include "platform/com/guard.h"
#include "platform/com/module_class.h"
#include "platform/com/module_library.h"

using tessara::ClassTable;

namespace tessara {

HRESULT RegisterModuleClass(REFCLSID clsid, const char* modulePath) noexcept
{
    if (!modulePath)
        return E_INVALIDARG;
    return Guard([&] {
        ClassTable::Instance().AddModuleClass(clsid, modulePath);
        return S_OK;
    });
}

}  // namespace tessara

extern "C" {

HRESULT CoGetClassObject(REFCLSID clsid, DWORD, void*, REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    return Guard([&]() -> HRESULT {
        if (const ComPtr<IUnknown> factory = ClassTable::Instance().FindFactory(clsid))
            return factory->QueryInterface(iid, out);
        std::shared_ptr<tessara::ModuleLibrary> module;
        const HRESULT result = ClassTable::Instance().FindModule(clsid, module);
        return FAILED(result) ? result : module->GetClassObject(clsid, iid, out);
    });
}

HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    ComPtr<IClassFactory> factory;
    const HRESULT result = CoGetClassObject(clsid, context, nullptr, IID_IClassFactory, factory.OutVoid());
    return FAILED(result) ? result : factory->CreateInstance(outer, iid, out);
}

HRESULT CoRegisterClassObject(REFCLSID clsid, IUnknown* factory, DWORD, DWORD, DWORD* cookie)
{
    if (!cookie)
        return E_POINTER;
    *cookie = 0;
    if (!factory)
        return E_INVALIDARG;
    return Guard([&] {
        *cookie = ClassTable::Instance().AddFactory(clsid, factory);
        return S_OK;
    });
}

HRESULT CoRevokeClassObject(DWORD cookie)
{
    return ClassTable::Instance().RemoveFactory(cookie) ? S_OK : CO_E_OBJNOTREG;
}

void CoFreeUnusedLibraries()
{
    // Without memory for the list nothing is unloaded, which the next call makes up for.
    Guard([] {
        ClassTable::Instance().FreeUnusedModules();
        return S_OK;
    });
}
}
