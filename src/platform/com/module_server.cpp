#include "platform/com/module_server.h"

#include "platform/com/com_ptr.h"
#include "platform/com/guard.h"
#include "platform/com/module_library.h"
#include "platform/system/debug_output.h"

namespace tessara {

namespace {

HRESULT CallExport(const std::string& modulePath, const char* name) noexcept
{
    return Guard([&]() -> HRESULT {
        std::shared_ptr<ModuleLibrary> module;
        const HRESULT result = ModuleLibrary::Load(modulePath, module);
        if (FAILED(result))
            return result;
        const auto procedure = module->FindProcedure(name);
        if (!procedure) {
            OutputDebugStringA(("The module " + modulePath + " doesn't export " + name + ".\n").c_str());
            return CO_E_ERRORINDLL;
        }
        return procedure();
    });
}

}  // namespace

HRESULT RegisterServer(const std::string& modulePath) noexcept
{
    return CallExport(modulePath, "DllRegisterServer");
}

HRESULT UnregisterServer(const std::string& modulePath) noexcept
{
    return CallExport(modulePath, "DllUnregisterServer");
}

HRESULT ProbeServer(const std::string& modulePath, REFCLSID clsid) noexcept
{
    return Guard([&]() -> HRESULT {
        std::shared_ptr<ModuleLibrary> module;
        const HRESULT result = ModuleLibrary::Load(modulePath, module);
        if (FAILED(result))
            return result;
        ComPtr<IClassFactory> factory;
        const HRESULT served = module->GetClassObject(clsid, IID_IClassFactory, factory.OutVoid());
        if (FAILED(served))
            return served;
        ComPtr<IUnknown> object;
        return factory->CreateInstance(nullptr, IID_IUnknown, object.OutVoid());
    });
}

}  // namespace tessara
