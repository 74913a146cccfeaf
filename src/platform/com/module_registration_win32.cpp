#include "platform/com/com_ptr.h"
#include "platform/com/module_registration.h"
#include "platform/com/registry/registry_error.h"
#include "platform/com/registry/registry_script.h"
#include "platform/com/registry/registry_tree_win32.h"
#include "platform/system/debug_output.h"
#include "platform/system/wide_text_win32.h"

#include <new>

// In the system's library, and not in every header for it.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND system);

namespace tessara {

namespace {

/// Runs work on the registry; a failure becomes its result code and a debug line.
template <class Work>
HRESULT Report(Work&& work) noexcept
{
    try {
        work();
        return S_OK;
    } catch (const RegistryError& error) {
        OutputDebugStringA((std::string(error.what()) + '\n').c_str());
        return error.Result();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

/// A file's name in the short form of its file system, where it has one: no blanks, and letters of the alphabet alone.
std::string ShortName(const std::wstring& path)
{
    std::wstring name(path.size() + MAX_PATH, L'\0');
    const DWORD length = GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size()));
    return ToNarrow(length > 0 && length < name.size() ? std::wstring(name, 0, length) : path);
}

/// The entries of a script before and after it was run.
struct ScriptChange {
    ScriptChange(const RegistryTree& tree, const ModuleRegistration& registration, ScriptAction action)
    {
        const std::string module = ShortName(ToWide(registration.modulePath));
        RegistryData places;
        RunRegistryScript(registration.script, ScriptAction::Register, module, places);
        before = tree.Read(places);
        after = before;
        RunRegistryScript(registration.script, action, module, after);
    }

    RegistryData before;
    RegistryData after;
};

HRESULT RegisterTypeLibrary(const std::wstring& path, bool machine)
{
    ComPtr<ITypeLib> library;
    const HRESULT loaded = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Out());
    if (FAILED(loaded))
        return loaded;
    std::wstring file = path;
    return machine ? RegisterTypeLib(library.Get(), file.data(), nullptr)
                   : RegisterTypeLibForUser(library.Get(), file.data(), nullptr);
}

void UnregisterTypeLibrary(const TypeLibraryId& library, bool machine)
{
    const auto unregister = machine ? &UnRegisterTypeLib : &UnRegisterTypeLibForUser;
    unregister(library.id, library.major, library.minor, library.locale, SYS_WIN64);
}

}  // namespace

HRESULT RegisterModule(const ModuleRegistration& registration) noexcept
{
    return Report([&] {
        if (registration.modulePath.empty())
            throw RegistryError(E_FAIL, "A module that doesn't know its own file can't be registered.");
        const RegistryTree machine(HKEY_LOCAL_MACHINE);
        const RegistryTree user(HKEY_CURRENT_USER);
        const RegistryTree& tree = machine ? machine : user;
        if (!tree)
            throw RegistryError(REGDB_E_WRITEREGDB, "The registry can't be written.");
        const ScriptChange change(tree, registration, ScriptAction::Register);
        tree.Change(change.before, change.after);
        const HRESULT result = RegisterTypeLibrary(ToWide(registration.modulePath), static_cast<bool>(machine));
        if (FAILED(result)) {
            tree.Change(change.after, change.before);
            throw RegistryError(result, "The type library of " + std::string(registration.modulePath) +
                                            " can't be registered.");
        }
    });
}

HRESULT UnregisterModule(const ModuleRegistration& registration) noexcept
{
    return Report([&] {
        for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
            const RegistryTree tree(root);
            if (!tree)
                continue;
            const ScriptChange change(tree, registration, ScriptAction::Unregister);
            tree.Change(change.before, change.after);
            UnregisterTypeLibrary(registration.typeLibrary, root == HKEY_LOCAL_MACHINE);
        }
    });
}

}  // namespace tessara
