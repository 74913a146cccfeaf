#include "platform/com/module_library.h"
#include "platform/system/debug_output.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

namespace tessara {

namespace {

void* BaseOf(const void* address) noexcept
{
    Dl_info info = {};
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

void Say(const std::string& line)
{
    OutputDebugStringA((line + '\n').c_str());
}

/// Says why the last dlopen failed.
HRESULT Refuse(const std::string& path)
{
    const char* reason = dlerror();
    if (access(path.c_str(), F_OK) != 0) {
        Say("The module " + path + " isn't there.");
        return CO_E_DLLNOTFOUND;
    }
    std::string why = reason ? reason : "no reason is known";
    if (why.starts_with(path + ": "))
        why.erase(0, path.size() + 2);
    Say("The module " + path + " can't be loaded: " + why + '.');
    return CO_E_ERRORINDLL;
}

}  // namespace

HRESULT ModuleLibrary::Load(const std::string& path, std::shared_ptr<ModuleLibrary>& module)
{
    // Opening a pipe would wait for its other end. A name that isn't there may be one that the loader looks for.
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        Say("The file " + path + " is no module: it is " +
            (S_ISDIR(status.st_mode) ? "a folder." : "no regular file."));
        return CO_E_ERRORINDLL;
    }
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle)
        return Refuse(path);
    std::shared_ptr<ModuleLibrary> loaded(new ModuleLibrary(handle));
    loaded->getClassObject_ = reinterpret_cast<GetClassObjectProc>(dlsym(handle, "DllGetClassObject"));
    if (!loaded->getClassObject_) {
        Say("The file " + path + " is no module: it doesn't export DllGetClassObject.");
        return CO_E_ERRORINDLL;
    }
    loaded->canUnloadNow_ = loaded->FindProcedure("DllCanUnloadNow");
    module = std::move(loaded);
    return S_OK;
}

ModuleLibrary::~ModuleLibrary()
{
    dlclose(handle_);
}

ModuleLibrary::Procedure ModuleLibrary::FindProcedure(const char* name) const noexcept
{
    return reinterpret_cast<Procedure>(dlsym(handle_, name));
}

bool ModuleLibrary::Implements(const IUnknown* object) const noexcept
{
    const void* methods = nullptr;
    std::memcpy(&methods, static_cast<const void*>(object), sizeof methods);
    return BaseOf(methods) == BaseOf(reinterpret_cast<const void*>(getClassObject_));
}

}  // namespace tessara
