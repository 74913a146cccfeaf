#include "module/class_factory.h"

#include "module/module_locks.h"
#include "platform/com/guard.h"

HRESULT CComClassFactory::QueryInterface(REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == IID_IClassFactory))
        return E_NOINTERFACE;
    *out = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG CComClassFactory::AddRef()
{
    const ULONG count = ++count_;
    if (count == 2)
        ModuleLocks::Take();
    return count;
}

ULONG CComClassFactory::Release()
{
    const ULONG count = --count_;
    if (count == 1)
        ModuleLocks::GiveBack();
    if (count == 0)
        delete this;
    return count;
}

HRESULT CComClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (outer && !(iid == IID_IUnknown))
        return CLASS_E_NOAGGREGATION;
    return Guard([&] { return creator_(outer, iid, out); });
}

HRESULT CComClassFactory::LockServer(BOOL lock)
{
    if (lock)
        ModuleLocks::Take();
    else
        ModuleLocks::GiveBack();
    return S_OK;
}
