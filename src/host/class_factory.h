#pragma once

#include "../platform/com/com_object.h"
#include "../platform/com/guard.h"

namespace tessara {

/// Maker of the objects of class T, whose constructor takes the controlling object of an aggregate or null.
template <class T>
class ClassFactory final : public ComObject<IClassFactory> {
public:
    /// \return CLASS_E_NOAGGREGATION when an outer object asks for another interface than IUnknown
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override
    {
        if (!out)
            return E_POINTER;
        *out = nullptr;
        if (outer && !(iid == IID_IUnknown))
            return CLASS_E_NOAGGREGATION;
        return Guard([&] { return HandOut(new T(outer), iid, out); });
    }

    /// The classes of a host live as long as its process: there is nothing to lock.
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace tessara
