#pragma once

#include "module/class_factory.h"

#include <atomic>
#include <mutex>

/// The one class that the module serves, with its factory, which is made when it is first asked for and kept until the
/// module ends.
class ObjectMap {
public:
    ObjectMap() = default;
    ObjectMap(const ObjectMap&) = delete;
    ObjectMap& operator=(const ObjectMap&) = delete;

    /// Results as DllGetClassObject; `out` is not null.
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out);

    /// Releases the cached factory. A host that still holds it keeps the object itself.
    void Term() noexcept;

private:
    /// \return the cached factory \throws std::bad_alloc
    CComClassFactory& Factory();

    std::mutex lock_;  // guards the creation of the factory
    std::atomic<CComClassFactory*> factory_{nullptr};
};
