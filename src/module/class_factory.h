#pragma once

#include "platform/com/unknown.h"

#include <atomic>

/// The factory of one class of the module. The module's object map keeps it for good with a reference of its own; as
/// long as somebody else holds one, the factory holds a module lock.
class CComClassFactory final : public IClassFactory {
public:
    /// Makes one new object, plain or inside an aggregate. \throws std::bad_alloc
    using Creator = HRESULT (*)(IUnknown* outer, REFIID iid, void** out);

    explicit CComClassFactory(Creator creator) noexcept : creator_(creator) {}
    CComClassFactory(const CComClassFactory&) = delete;
    CComClassFactory& operator=(const CComClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    const Creator creator_;
    std::atomic<ULONG> count_{0};
};
