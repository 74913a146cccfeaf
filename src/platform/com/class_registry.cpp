#include "platform/com/class_registry.h"

#include "platform/com/bstr.h"
#include "platform/com/guid_text.h"
#include "platform/com/module_resource.h"
#include "platform/com/registry/registry_error.h"
#include "platform/com/registry/registry_script.h"
#include "platform/com/registry/registry_store.h"
#include "platform/com/registry/type_library_entries.h"
#include "platform/system/debug_output.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <optional>
#include <set>

namespace tessara {

namespace {

std::atomic<RegistryScope> g_scope{RegistryScope::User};

/// Runs work on the registry; a failure becomes its result code and a debug line.
template <class Work>
HRESULT Report(Work&& work) noexcept
{
    try {
        return work();
    } catch (const RegistryError& error) {
        OutputDebugStringA((std::string(error.what()) + '\n').c_str());
        return error.Result();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

/// Changes a store in one step. Nobody sees it half-changed, and a failure on the way changes nothing.
template <class Change>
HRESULT Update(const RegistryStore& store, Change&& change)
{
    RegistryWriter writer(store);
    const RegistryData before = ReadRegistryStore(store);
    RegistryData data = before;
    change(data);
    if (data != before)
        writer.Replace(data);
    return S_OK;
}

/// The first value that a store has at a place.
std::optional<std::string> FindValue(const std::string& path)
{
    for (const RegistryStore& store : RegistryStores()) {
        const RegistryData data = ReadRegistryStore(store);
        if (const std::string* value = data.FindValue(path))
            return *value;
    }
    return std::nullopt;
}

std::string ClassKey(REFCLSID clsid)
{
    return "CLSID\\" + GuidText(clsid);
}

std::string ValueOrNothing(const RegistryData& data, const std::string& path, std::string_view name = {})
{
    const std::string* value = data.FindValue(path, name);
    return value ? *value : std::string();
}

/// \param seen ids of the classes that are listed
void ListClasses(const RegistryStore& store, std::vector<RegisteredClass>& classes, std::set<std::string>& seen)
{
    const RegistryData data = ReadRegistryStore(store);
    for (const std::string& name : data.Subkeys("CLSID")) {
        const std::string key = "CLSID\\" + name;
        const std::string* module = data.FindValue(key + "\\InprocServer32");
        const auto id = ParseGuid(name);
        if (!id || !module)
            continue;
        const bool hidden = !seen.insert(GuidText(*id)).second;
        classes.push_back({*id, ValueOrNothing(data, key), ValueOrNothing(data, key + "\\ProgID"),
                           ValueOrNothing(data, key + "\\InprocServer32", "ThreadingModel"), *module, store.scope,
                           store.path, hidden});
    }
}

}  // namespace

HRESULT RegisterModule(const ModuleRegistration& registration) noexcept
{
    return Report([&] {
        const std::string path(registration.modulePath);
        if (path.empty())
            throw RegistryError(E_FAIL, "A module that doesn't know its own file can't be registered.");
        return Update(WritableRegistryStore(g_scope), [&](RegistryData& data) {
            RunRegistryScript(registration.script, ScriptAction::Register, path, data);
            if (!ReadModuleResource(path, "TYPELIB", 1))
                throw RegistryError(TYPE_E_CANTLOADLIBRARY, "The module " + path + " has no type description.");
            AddTypeLibrary(registration.typeLibrary, path, data);
        });
    });
}

HRESULT UnregisterModule(const ModuleRegistration& registration) noexcept
{
    return Report([&] {
        const RegistryStore store = WritableRegistryStore(g_scope);
        if (!RegistryStoreExists(store))
            return S_OK;
        return Update(store, [&](RegistryData& data) {
            RunRegistryScript(registration.script, ScriptAction::Unregister, registration.modulePath, data);
            RemoveTypeLibrary(registration.typeLibrary, data);
        });
    });
}

RegistryScope SetRegistrationScope(RegistryScope scope) noexcept
{
    return g_scope.exchange(scope);
}

std::string RegistrationFile(RegistryScope scope)
{
    try {
        return WritableRegistryStore(scope).path;
    } catch (const RegistryError&) {
        return {};
    }
}

HRESULT FindRegisteredModule(REFCLSID clsid, std::string& modulePath) noexcept
{
    return Report([&] {
        const auto path = FindValue(ClassKey(clsid) + "\\InprocServer32");
        if (!path)
            return REGDB_E_CLASSNOTREG;
        if (!path->starts_with('/'))
            throw RegistryError(REGDB_E_INVALIDVALUE, "The module \"" + *path + "\" that is registered for the class " +
                                                          GuidText(clsid) + " is not an absolute path.");
        modulePath = *path;
        return S_OK;
    });
}

HRESULT FindTypeDescription(const TypeLibraryId& library, std::string& text) noexcept
{
    return Report([&] {
        const auto path = FindValue(TypeLibraryPathKey(library));
        if (!path)
            return TYPE_E_LIBNOTREGISTERED;
        auto found = ReadModuleResource(*path, "TYPELIB", 1);
        if (!found)
            throw RegistryError(TYPE_E_CANTLOADLIBRARY, "The module " + *path +
                                                            " that is registered for the type library " +
                                                            GuidText(library.id) + " has no type description.");
        text = std::move(*found);
        return S_OK;
    });
}

RegistryContent ListRegisteredClasses()
{
    RegistryContent content;
    std::set<std::string> seen;
    for (const RegistryStore& store : RegistryStores()) {
        try {
            ListClasses(store, content.classes, seen);
        } catch (const RegistryError& error) {
            content.faults.emplace_back(error.what());
        }
    }
    return content;
}

}  // namespace tessara

extern "C" HRESULT CLSIDFromProgID(const OLECHAR* progId, CLSID* clsid)
{
    if (!progId || !clsid)
        return E_POINTER;
    *clsid = {};
    return tessara::Report([&] {
        tessara::BstrHolder name;
        *name.Out() = SysAllocString(progId);
        const auto text = tessara::FindValue(name.Narrow() + "\\CLSID");
        const auto id = text ? tessara::ParseGuid(*text) : std::nullopt;
        if (!id)
            return CO_E_CLASSSTRING;
        *clsid = *id;
        return S_OK;
    });
}
