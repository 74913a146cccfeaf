#include "platform/com/com_ptr.h"
#include "platform/com/guard.h"
#include "platform/com/module_class.h"
#include "platform/com/module_library.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace tessara {

namespace {

/// The classes that this process can make: factories that the host registered, and modules that serve a class.
class ClassTable {
public:
    DWORD AddFactory(REFCLSID clsid, IUnknown* factory)
    {
        const std::lock_guard lock(mutex_);
        factories_.push_back({clsid, nextCookie_, ComPtr<IUnknown>(factory)});
        return nextCookie_++;
    }

    ComPtr<IUnknown> RemoveFactory(DWORD cookie)
    {
        const std::lock_guard lock(mutex_);
        const auto found = std::find_if(factories_.begin(), factories_.end(),
                                        [cookie](const FactoryEntry& entry) { return entry.cookie == cookie; });
        if (found == factories_.end())
            return nullptr;
        ComPtr<IUnknown> factory = std::move(found->factory);
        factories_.erase(found);
        return factory;
    }

    ComPtr<IUnknown> FindFactory(REFCLSID clsid) const
    {
        const std::lock_guard lock(mutex_);
        const auto found = std::find_if(factories_.rbegin(), factories_.rend(),
                                        [&clsid](const FactoryEntry& entry) { return entry.clsid == clsid; });
        return found == factories_.rend() ? ComPtr<IUnknown>() : found->factory;
    }

    void AddModuleClass(REFCLSID clsid, const std::string& path)
    {
        const std::lock_guard lock(mutex_);
        moduleClasses_.push_back({clsid, path});
    }

    /// Loads the module of a class if that hasn't happened. A module's initialisers may come back to this table, so the
    /// load runs outside its lock.
    HRESULT FindModule(REFCLSID clsid, ModuleLibrary& module)
    {
        std::string path;
        {
            const std::lock_guard lock(mutex_);
            const auto found = std::find_if(moduleClasses_.rbegin(), moduleClasses_.rend(),
                                            [&clsid](const ModuleClass& entry) { return entry.clsid == clsid; });
            if (found == moduleClasses_.rend())
                return REGDB_E_CLASSNOTREG;
            path = found->path;
            const auto loaded = modules_.find(path);
            if (loaded != modules_.end()) {
                module = loaded->second;
                return S_OK;
            }
        }
        const HRESULT result = module.Load(path);
        if (SUCCEEDED(result)) {
            const std::lock_guard lock(mutex_);
            modules_.emplace(path, module);
        }
        return result;
    }

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

    mutable std::mutex mutex_;
    std::vector<FactoryEntry> factories_;
    std::vector<ModuleClass> moduleClasses_;
    std::map<std::string, ModuleLibrary> modules_;
    DWORD nextCookie_ = 1;
};

/// Never destroyed: factories of modules that are gone by then must not be released at exit.
ClassTable& Table()
{
    static ClassTable& table = *new ClassTable;
    return table;
}

}  // namespace

HRESULT RegisterModuleClass(REFCLSID clsid, const char* modulePath) noexcept
{
    if (!modulePath)
        return E_INVALIDARG;
    return Guard([&] {
        Table().AddModuleClass(clsid, modulePath);
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
        if (const ComPtr<IUnknown> factory = tessara::Table().FindFactory(clsid))
            return factory->QueryInterface(iid, out);
        tessara::ModuleLibrary module;
        const HRESULT result = tessara::Table().FindModule(clsid, module);
        return FAILED(result) ? result : module.GetClassObject(clsid, iid, out);
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
        *cookie = tessara::Table().AddFactory(clsid, factory);
        return S_OK;
    });
}

HRESULT CoRevokeClassObject(DWORD cookie)
{
    return tessara::Table().RemoveFactory(cookie) ? S_OK : CO_E_OBJNOTREG;
}
}
