#include "fuzz/targets.h"
#include "platform/com/registry/registry_error.h"
#include "platform/com/registry/registry_script.h"
#include "platform/com/registry/registry_store.h"
#include "support/scratch_folder.h"

#include <string>

namespace tessara::test {

namespace {

constexpr std::size_t kPage = 64;
constexpr char kScript[] = R"(
HKCR
{
    My.Class = s 'it''s a class'
    {
        CLSID = s '{1}'
    }
    NoRemove CLSID
    {
        ForceRemove {1} = s Plain
        {
            InprocServer32 = s '%MODULE%' { val ThreadingModel = s 'Apartment' }
        }
    }
})";

/// Walks through all of it, writes it and reads it again.
void UseAll(const RegistryData& data, const RegistryStore& again)
{
    for (const auto& [path, values] : data.All()) {
        data.Subkeys(path);
        for (const auto& [name, value] : values)
            Require(data.FindValue(path, name) && *data.FindValue(path, name) == value, "a value isn't found");
    }
    RegistryWriter(again).Replace(data);
    Require(ReadRegistryStore(again) == data, "a store isn't what was written");
}

}  // namespace

bool UseDamagedRegistry(Damage damage)
{
    static const ScratchFolder folder;
    const RegistryStore store{RegistryScope::User, folder / "damaged"};
    const RegistryStore again{RegistryScope::User, folder / "again"};
    static const std::string whole = [&] {
        RegistryData data;
        RunRegistryScript(kScript, ScriptAction::Register, "/module.so", data);
        UseAll(data, again);
        return ReadBytes(again.path);
    }();
    const std::size_t kind = damage.Take(1);
    const bool ofScript = kind % 2 == 0;
    std::string text = ofScript ? kScript : whole;
    if (kind >= 224)
        damage.Cut(text);
    damage.Apply(text, kPage);
    try {
        RegistryData data;
        if (ofScript) {
            RunRegistryScript(text, ScriptAction::Register, "/module.so", data);
            UseAll(data, again);
            RunRegistryScript(text, ScriptAction::Unregister, "/module.so", data);
        } else {
            folder.Write("damaged", text);
            data = ReadRegistryStore(store);
        }
        UseAll(data, again);
        return true;
    } catch (const RegistryError& error) {
        Require(ofScript || std::string(error.what()).find(store.path) != std::string::npos,
                std::string("no file named: ") + error.what());
        return false;
    }
}

}  // namespace tessara::test
