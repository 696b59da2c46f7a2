#pragma once

#include "server/com/ComError.h"
#include "server/com/Platform.h"

#include <utility>

namespace server {

/// Holds one reference on a COM object and gives it back.
template <class T> class ComPtr {
public:
    ComPtr() noexcept = default;
    /// Takes a reference of its own on `object`, which may be null.
    explicit ComPtr(T* object) noexcept : object_(object) {
        if (object_)
            object_->AddRef();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() {
        if (object_)
            object_->Release();
    }

    /// Takes over a reference that the caller owns.
    static ComPtr Adopt(T* object) noexcept {
        ComPtr pointer;
        pointer.object_ = object;
        return pointer;
    }

    T* Get() const noexcept { return object_; }
    /// Throws error 91 for no object.
    T* operator->() const {
        if (!object_)
            RaiseObjectNotSet();
        return object_;
    }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// Where a function stores the reference that it hands out; what was held is released.
    T** Put() noexcept {
        *this = ComPtr();
        return &object_;
    }
    /// `Put` for functions that hand out a `void*`.
    void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }
    /// Hands the reference to the caller.
    T* Detach() noexcept { return std::exchange(object_, nullptr); }

    /// The object's interface `U`, or null when it has none.
    template <class U> ComPtr<U> TryAs() const noexcept {
        ComPtr<U> other;
        if (object_)
            object_->QueryInterface(__uuidof(U), other.PutVoid());
        return other;
    }
    /// The object's interface `U`. Throws error 91 for no object, 13 for one without that interface.
    template <class U> ComPtr<U> As() const {
        if (!object_)
            RaiseObjectNotSet();
        ComPtr<U> other = TryAs<U>();
        if (!other)
            RaiseTypeMismatch();
        return other;
    }

private:
    T* object_ = nullptr;
};

} // namespace server
