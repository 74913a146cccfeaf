#pragma once

#include "com.h"

#include <utility>

/// Holds one reference to an object and gives it back at the end of its life.
template <class T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}

    /// Takes a reference of its own.
    explicit ComPtr(T* object) noexcept : object_(object)
    {
        if (object_)
            object_->AddRef();
    }

    ComPtr(const ComPtr& other) noexcept : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

    ComPtr& operator=(ComPtr other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }

    ~ComPtr()
    {
        if (object_)
            object_->Release();
    }

    /// Takes over a reference that the caller holds.
    static ComPtr Attach(T* object) noexcept
    {
        ComPtr result;
        result.object_ = object;
        return result;
    }

    /// Gives the reference to the caller.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(object_, nullptr); }

    T* Get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// Drops what is held and gives the address for an out argument of type T**.
    T** Out() noexcept
    {
        *this = ComPtr();
        return &object_;
    }

    /// The same for an out argument of type void**.
    void** OutVoid() noexcept { return reinterpret_cast<void**>(Out()); }

    /// Asks the object for another interface. \return null where the object doesn't have it.
    template <class U>
    ComPtr<U> As() const noexcept
    {
        ComPtr<U> result;
        if (object_)
            object_->QueryInterface(InterfaceId<U>, result.OutVoid());
        return result;
    }

private:
    T* object_ = nullptr;
};
