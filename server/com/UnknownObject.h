#pragma once

#include "server/com/Platform.h"

#include <atomic>

namespace server {

/// An object's own part of COM: it offers `First` and `Others`, begins with one reference, and deletes itself with the
/// last.
template <class First, class... Others> class UnknownObject : public First, public Others... {
public:
    UnknownObject() = default;
    UnknownObject(const UnknownObject&) = delete;
    UnknownObject& operator=(const UnknownObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (id == IID_IUnknown || id == __uuidof(First))
            *object = static_cast<First*>(this);
        else
            (void)(Offer<Others>(id, object) || ...);
        if (!*object)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~UnknownObject() = default;

private:
    template <class Interface> bool Offer(REFIID id, void** object) noexcept {
        if (id != __uuidof(Interface))
            return false;
        *object = static_cast<Interface*>(this);
        return true;
    }

    std::atomic<ULONG> references_ = 1;
};

} // namespace server
