#include "module/module_object.h"

#include "module/object_map.h"
#include "module/resources.h"

#include <utility>

void ModuleObject::Init(ObjectMap& objectMap, std::string path, const tessara::TypeLibraryId& typeLibrary) noexcept
{
    objectMap_ = &objectMap;
    path_ = std::move(path);
    typeLibrary_ = typeLibrary;
}

void ModuleObject::Term() noexcept
{
    if (ObjectMap* map = std::exchange(objectMap_, nullptr))
        map->Term();
}

HRESULT ModuleObject::GetClassObject(REFCLSID clsid, REFIID iid, void** out) const
{
    return objectMap_ ? objectMap_->GetClassObject(clsid, iid, out) : CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT ModuleObject::RegisterServer() const noexcept
{
    return tessara::RegisterModule(Registration());
}

HRESULT ModuleObject::UnregisterServer() const noexcept
{
    return tessara::UnregisterModule(Registration());
}

tessara::ModuleRegistration ModuleObject::Registration() const noexcept
{
    return {path_, kRegistryScript, typeLibrary_};
}
