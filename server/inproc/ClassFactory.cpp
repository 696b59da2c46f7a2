#include "server/inproc/ClassFactory.h"

#include "server/inproc/Module.h"

#include <atomic>
#include <new>

namespace server {

namespace {

class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(const ClassEntry& entry) noexcept : entry_(entry) {}
    virtual ~ClassFactory() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object)
            return E_POINTER;
        *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
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

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        try {
            return entry_.create()->QueryInterface(id, object);
        } catch (...) {
            return SetErrorObject(CurrentError());
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        ModuleReference::Lock(lock != FALSE);
        return S_OK;
    }

private:
    const ClassEntry& entry_;
    ModuleReference module_;
    std::atomic<ULONG> references_ = 1;
};

} // namespace

HRESULT GetClassFactory(const ClassEntry& entry, REFIID interfaceId, void** factory) noexcept {
    auto* made = new (std::nothrow) ClassFactory(entry);
    if (!made)
        return E_OUTOFMEMORY;
    const ComPtr<IClassFactory> held = ComPtr<IClassFactory>::Adopt(made);
    return held->QueryInterface(interfaceId, factory);
}

} // namespace server
