#pragma once

#include "com_ptr.h"

#include <atomic>
#include <new>
#include <tuple>

/// Base of every component object: counts its references, answers QueryInterface for IUnknown and the interfaces in the
/// list, and can live inside an aggregate. The count starts at 0 and the object deletes itself when it falls back to 0.
///
/// With an outer object, the three IUnknown methods of all interfaces in the list go to it, and the object's own life
/// hangs on Inner(). A derived class implements the interfaces' other methods only.
template <class First, class... Rest>
class ComObject : public First, public Rest... {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) final
    {
        return outer_ ? outer_->QueryInterface(iid, out) : OwnQueryInterface(iid, out);
    }

    ULONG STDMETHODCALLTYPE AddRef() final { return outer_ ? outer_->AddRef() : OwnAddRef(); }

    ULONG STDMETHODCALLTYPE Release() final { return outer_ ? outer_->Release() : OwnRelease(); }

    /// The IUnknown that controls this object's life: its own one in an aggregate, else its first interface.
    IUnknown* Inner() noexcept { return outer_ ? static_cast<IUnknown*>(&inner_) : AsFirst(); }

protected:
    /// \param outer the controlling object of an aggregate, which isn't counted, or null
    explicit ComObject(IUnknown* outer = nullptr) noexcept : outer_(outer), inner_(*this) {}

    virtual ~ComObject() = default;

    /// Called when the last reference has gone.
    virtual void FinalRelease() noexcept { delete this; }

private:
    class InnerUnknown final : public IUnknown {
    public:
        explicit InnerUnknown(ComObject& object) noexcept : object_(object) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
        {
            return object_.OwnQueryInterface(iid, out);
        }
        ULONG STDMETHODCALLTYPE AddRef() override { return object_.OwnAddRef(); }
        ULONG STDMETHODCALLTYPE Release() override { return object_.OwnRelease(); }

    private:
        ComObject& object_;
    };

    IUnknown* AsFirst() noexcept { return static_cast<First*>(this); }

    template <class T>
    bool Answer(REFIID iid, void** out) noexcept
    {
        if (!(iid == InterfaceId<T>))
            return false;
        T* self = this;
        *out = self;
        self->AddRef();
        return true;
    }

    HRESULT OwnQueryInterface(REFIID iid, void** out) noexcept
    {
        if (!out)
            return E_POINTER;
        *out = nullptr;
        if (iid == IID_IUnknown) {
            IUnknown* inner = Inner();
            *out = inner;
            inner->AddRef();
            return S_OK;
        }
        return (Answer<First>(iid, out) || ... || Answer<Rest>(iid, out)) ? S_OK : E_NOINTERFACE;
    }

    ULONG OwnAddRef() noexcept { return ++count_; }

    ULONG OwnRelease() noexcept
    {
        const ULONG left = --count_;
        if (left == 0)
            FinalRelease();
        return left;
    }

    IUnknown* const outer_;  // not counted: it owns this object
    InnerUnknown inner_;
    std::atomic<ULONG> count_{0};
};

/// Makes an object of class T. \throws std::bad_alloc, and what the constructor throws.
template <class T, class... Args>
ComPtr<T> MakeObject(Args&&... args)
{
    return ComPtr<T>(new T(std::forward<Args>(args)...));
}

/// Gives a new object, whose count is still 0, as `iid`, or deletes it where it doesn't have that interface.
template <class T>
HRESULT HandOut(T* object, REFIID iid, void** out)
{
    IUnknown* inner = object->Inner();
    inner->AddRef();
    const HRESULT result = inner->QueryInterface(iid, out);
    inner->Release();
    return result;
}
