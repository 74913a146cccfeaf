#include "module/object_map.h"

#include "module/module_locks.h"
#include "platform/com/guard.h"
#include "surface/co_tessara.h"
#include "textures/elevation_palette.h"

namespace {

/// A palette whose code lies in the module: it keeps the module loaded wherever it goes.
class ServedPalette final : private ModuleLocks::Hold, public ElevationPalette {};

/// A surface as the module serves it: it keeps the module loaded from its construction to its destruction.
class ServedTessara final : private ModuleLocks::Hold, public CoTessara {
public:
    using CoTessara::CoTessara;

protected:
    std::unique_ptr<ElevationPalette> NewPalette() const override { return std::make_unique<ServedPalette>(); }
};

HRESULT CreateTessara(IUnknown* outer, REFIID iid, void** out)
{
    return HandOut(new ServedTessara(outer), iid, out);
}

}  // namespace

void ObjectMap::Term() noexcept
{
    if (CComClassFactory* factory = factory_.exchange(nullptr))
        factory->Release();
}

HRESULT ObjectMap::GetClassObject(REFCLSID clsid, REFIID iid, void** out)
{
    if (!(clsid == CLSID_CoTessara))
        return CLASS_E_CLASSNOTAVAILABLE;
    return Guard([&] { return Factory().QueryInterface(iid, out); });
}

CComClassFactory& ObjectMap::Factory()
{
    if (CComClassFactory* factory = factory_.load(std::memory_order_acquire))
        return *factory;
    const std::lock_guard guard(lock_);
    CComClassFactory* factory = factory_.load(std::memory_order_relaxed);
    if (!factory) {
        factory = new CComClassFactory(&CreateTessara);
        factory->AddRef();
        factory_.store(factory, std::memory_order_release);
    }
    return *factory;
}
