#include "platform/com/class_table.h"

#include "platform/com/class_registry.h"
#include "platform/com/module_library.h"

#include <algorithm>

namespace tessara {

ClassTable& ClassTable::Instance()
{
    static ClassTable& table = *new ClassTable;
    return table;
}

DWORD ClassTable::AddFactory(REFCLSID clsid, IUnknown* factory)
{
    const std::lock_guard lock(mutex_);
    factories_.push_back({clsid, nextCookie_, ComPtr<IUnknown>(factory)});
    return nextCookie_++;
}

ComPtr<IUnknown> ClassTable::RemoveFactory(DWORD cookie)
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

ComPtr<IUnknown> ClassTable::FindFactory(REFCLSID clsid) const
{
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(factories_.rbegin(), factories_.rend(),
                                    [&clsid](const FactoryEntry& entry) { return entry.clsid == clsid; });
    return found == factories_.rend() ? ComPtr<IUnknown>() : found->factory;
}

void ClassTable::AddModuleClass(REFCLSID clsid, const std::string& path)
{
    const std::lock_guard lock(mutex_);
    moduleClasses_.push_back({clsid, path});
}

HRESULT ClassTable::FindModule(REFCLSID clsid, std::shared_ptr<ModuleLibrary>& module)
{
    std::string path;
    const HRESULT result = FindModulePath(clsid, path);
    return FAILED(result) ? result : LoadModule(path, module);
}

HRESULT ClassTable::FindModulePath(REFCLSID clsid, std::string& path) const
{
    {
        const std::lock_guard lock(mutex_);
        const auto found = std::find_if(moduleClasses_.rbegin(), moduleClasses_.rend(),
                                        [&clsid](const ModuleClass& entry) { return entry.clsid == clsid; });
        if (found != moduleClasses_.rend()) {
            path = found->path;
            return S_OK;
        }
    }
    return FindRegisteredModule(clsid, path);
}

HRESULT ClassTable::LoadModule(const std::string& path, std::shared_ptr<ModuleLibrary>& module)
{
    {
        const std::lock_guard lock(mutex_);
        if (const auto loaded = modules_.find(path); loaded != modules_.end()) {
            module = loaded->second;
            return S_OK;
        }
    }
    // A module's initialisers may come back to this table, so the load runs outside its lock. Of two threads that load
    // the same module one finds the other's entry afterwards and lets its own go, outside the lock as well.
    std::shared_ptr<ModuleLibrary> fresh;
    const HRESULT result = ModuleLibrary::Load(path, fresh);
    if (FAILED(result))
        return result;
    const std::lock_guard lock(mutex_);
    module = modules_.emplace(path, fresh).first->second;
    return S_OK;
}

bool ClassTable::HasFactoryOf(const ModuleLibrary& module) const
{
    return std::any_of(factories_.begin(), factories_.end(),
                       [&module](const FactoryEntry& entry) { return module.Implements(entry.factory.Get()); });
}

void ClassTable::FreeUnusedModules()
{
    // Destroyed behind the lock: a module's end may come back to this table.
    std::vector<std::shared_ptr<ModuleLibrary>> unused;
    const std::lock_guard lock(mutex_);
    unused.reserve(modules_.size());
    for (auto entry = modules_.begin(); entry != modules_.end();) {
        // Whoever is on the way to the module's factory holds it as well, and got it under this lock.
        std::shared_ptr<ModuleLibrary>& module = entry->second;
        if (module.use_count() == 1 && !HasFactoryOf(*module) && module->CanUnload()) {
            unused.push_back(std::move(module));
            entry = modules_.erase(entry);
        } else {
            ++entry;
        }
    }
}

}  // namespace tessara
