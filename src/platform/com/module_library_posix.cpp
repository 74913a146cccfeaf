#include "platform/com/module_library.h"

#include <dlfcn.h>

namespace tessara {

HRESULT ModuleLibrary::Load(const std::string& path)
{
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle)
        return CO_E_DLLNOTFOUND;
    void* entry = dlsym(handle, "DllGetClassObject");
    if (!entry) {
        dlclose(handle);
        return CO_E_ERRORINDLL;
    }
    getClassObject_ = reinterpret_cast<GetClassObjectProc>(entry);
    return S_OK;
}

}  // namespace tessara
