#include "platform/com/com_ptr.h"
#include "platform/com/guard.h"
#include "platform/com/module_class.h"
#include "platform/system/wide_text_win32.h"

#include <filesystem>

namespace tessara {

namespace {

using GetClassObjectProc = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);

HRESULT LoadFactory(REFCLSID clsid, const std::wstring& path, IUnknown** factory)
{
    const bool absolute = std::filesystem::path(path).is_absolute();
    HMODULE module = LoadLibraryExW(path.c_str(), nullptr, absolute ? LOAD_WITH_ALTERED_SEARCH_PATH : 0);
    if (!module) {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_MOD_NOT_FOUND ? CO_E_DLLNOTFOUND : CO_E_ERRORINDLL;
    }
    const auto getClassObject =
        reinterpret_cast<GetClassObjectProc>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    const HRESULT result =
        getClassObject ? getClassObject(clsid, IID_IUnknown, reinterpret_cast<void**>(factory)) : CO_E_ERRORINDLL;
    if (FAILED(result))
        FreeLibrary(module);
    return result;
}

}  // namespace

HRESULT RegisterModuleClass(REFCLSID clsid, const char* modulePath) noexcept
{
    if (!modulePath)
        return E_INVALIDARG;
    return Guard([&]() -> HRESULT {
        ComPtr<IUnknown> factory;
        const HRESULT result = LoadFactory(clsid, ToWide(modulePath), factory.Out());
        if (FAILED(result))
            return result;
        DWORD cookie = 0;
        return CoRegisterClassObject(clsid, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    });
}

}  // namespace tessara
